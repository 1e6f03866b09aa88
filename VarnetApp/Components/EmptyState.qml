import QtQuick
import Varnet

// What stands where there is nothing to show: on a page, or smaller in a card.
Column {
    id: state

    required property string iconName
    required property string title
    required property string note
    property bool inCard: false
    // What colours the circle; muted is no tone.
    property color tone: Theme.muted
    property bool captionNote: false

    readonly property bool toned: tone !== Theme.muted
    readonly property int circle: inCard ? 40 : 72

    width: 480
    spacing: 0

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: state.circle
        height: state.circle
        radius: state.circle / 2
        color: state.toned ? Theme.tint(state.tone) : state.inCard ? Theme.track : Theme.surface
        border.color: Theme.hairline
        border.width: state.inCard ? 0 : 1

        Icon {
            anchors.centerIn: parent
            size: state.inCard ? 20 : 28
            name: state.iconName
            color: state.toned ? Theme.tintText(state.tone) : Theme.muted
        }
    }
    Item {
        width: 1
        height: state.inCard ? 8 : 20
    }
    Label {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: state.title
        font: state.inCard ? Theme.strong : Theme.title
        line: state.inCard ? Theme.bodyLine : Theme.titleLine
        nudge: state.inCard ? Theme.bodyNudge : Theme.titleNudge
        wrapMode: Text.Wrap
    }
    Item {
        width: 1
        height: state.inCard ? 2 : 8
    }
    Label {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: state.note
        font: state.captionNote ? Theme.caption : Theme.body
        line: state.captionNote ? Theme.captionLine : Theme.bodyLine
        nudge: state.captionNote ? Theme.captionNudge : Theme.bodyNudge
        color: Theme.muted
        wrapMode: Text.Wrap
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: state.title + " " + state.note
}
