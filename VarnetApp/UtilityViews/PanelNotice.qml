import QtQuick
import Varnet

// Why there are no current readings.
Item {
    id: notice

    property string text: ""
    property bool failed: false

    implicitHeight: Math.max(36, words.implicitHeight + 12)

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        radius: 6
        color: notice.failed ? Theme.tint(Theme.warn) : Theme.track

        Icon {
            anchors.centerIn: parent
            name: notice.failed ? "warning" : "hourglass"
            color: notice.failed ? Theme.warn : Theme.muted
        }
    }
    Label {
        id: words
        x: 32
        width: Math.max(0, parent.width - x)
        anchors.verticalCenter: parent.verticalCenter
        text: notice.text
        color: Theme.muted
        wrapMode: Text.Wrap
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: notice.text
}
