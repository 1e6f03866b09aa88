import QtQuick
import Varnet

// A personal best, or the place that waits for one.
Card {
    id: card

    required property string name
    required property string title
    required property string icon
    required property string tone
    required property string figure
    required property string line
    required property string detail

    readonly property bool reached: figure.length > 0

    objectName: "best-" + name
    implicitHeight: Math.max(92, words.implicitHeight + 32)

    Rectangle {
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 44
        height: 44
        radius: 22
        color: card.reached ? Theme.tint(Theme[card.tone]) : Theme.track

        Icon {
            anchors.centerIn: parent
            size: 20
            name: card.icon
            color: card.reached ? Theme.tintText(Theme[card.tone]) : Theme.faint
        }
    }
    Column {
        id: words
        x: 76
        width: parent.width - x - 16
        anchors.verticalCenter: parent.verticalCenter

        Item {
            width: parent.width
            height: 24

            StrongText {
                y: 3
                width: parent.width - best.width - 8
                text: Words.text(card.title)
            }
            TitleText {
                id: best
                anchors.right: parent.right
                text: card.figure
            }
        }
        Label {
            width: parent.width
            visible: text.length > 0
            text: card.reached ? card.line : Words.text(card.line)
            color: Theme.muted
        }
        CaptionText {
            width: parent.width
            topPadding: nudge + 3
            text: Words.text(card.detail)
            wrapMode: Text.Wrap
        }
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: Words.text(title) + " " + (reached ? figure + (line.length > 0 ? " " + line : "")
                                                        : Words.text(line))
    Accessible.description: Words.text(detail)
}
