import QtQuick
import Varnet

// Why the history is not kept.
Rectangle {
    id: warning

    property string text: ""

    implicitHeight: words.implicitHeight + 22
    radius: Theme.radiusCard
    color: Theme.cover(Theme.bg, Theme.tint(Theme.warn))

    Icon {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        name: "warning"
        color: Theme.tintText(Theme.warn)
    }
    Label {
        id: words
        x: 42
        y: 11
        width: Math.max(0, parent.width - x - 14)
        text: warning.text
        color: Theme.tintText(Theme.warn)
        wrapMode: Text.Wrap
    }

    Accessible.role: Accessible.AlertMessage
    Accessible.name: warning.text
}
