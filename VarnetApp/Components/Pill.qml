import QtQuick
import Varnet

// A fact in a word or two: a port, a worktree, an agent, a state.
RoundBox {
    id: pill

    enum Kind { Neutral, Port, Worktree, Agent, Warn, Review, Good, Bad }

    required property int kind
    required property string text
    // Beside a name it is 18 high, alone 20.
    property bool small: false
    property string iconName: kind === Pill.Agent ? "agent" : kind === Pill.Worktree ? "projects"
                            : kind === Pill.Warn ? "moon" : ""

    readonly property bool toned: kind !== Pill.Neutral && kind !== Pill.Worktree
    readonly property color tone: kind === Pill.Port ? Theme.info : kind === Pill.Agent ? Theme.memory
                                : kind === Pill.Warn ? Theme.warn : kind === Pill.Review ? Theme.ember
                                : kind === Pill.Good ? Theme.good : kind === Pill.Bad ? Theme.bad : Theme.text
    readonly property color ink: kind === Pill.Port ? tone : toned ? Theme.tintText(tone) : Theme.text
    readonly property int widest: kind === Pill.Worktree ? 140 : 1000

    implicitWidth: Math.min(widest, Math.ceil(words.implicitWidth) + words.x + 8)
    implicitHeight: small ? 18 : 20
    radius: 10
    color: kind === Pill.Port ? "transparent" : toned ? Theme.tint(tone) : Theme.track
    lineColor: Theme.fade(tone, 0.7)
    lineWidth: kind === Pill.Port ? 1 : 0

    Icon {
        x: 7
        anchors.verticalCenter: parent.verticalCenter
        size: 12
        name: pill.iconName
        color: pill.kind === Pill.Worktree ? Theme.muted : pill.ink
    }
    CaptionText {
        id: words
        x: pill.iconName.length > 0 ? 22 : 8
        width: Math.max(0, Math.min(Math.ceil(implicitWidth), pill.width - x - 8))
        anchors.verticalCenter: parent.verticalCenter
        text: pill.text
        color: pill.ink
        elide: pill.kind === Pill.Worktree ? Text.ElideMiddle : Text.ElideRight
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: pill.text
}
