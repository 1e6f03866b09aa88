import QtQuick
import Varnet

// What the page is, since when it counts, and what went wrong with keeping it.
Item {
    id: head

    required property HallModel model

    implicitHeight: words.height + (warning.visible ? warning.height + 16 : 0)

    Column {
        id: words
        width: parent.width - 96
        spacing: 2

        DisplayText {
            width: parent.width
            text: Words.text("Hall of Flame")
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Label {
            width: parent.width
            text: Words.text("A little pride. A few receipts. Absolutely no chill.")
            color: Theme.muted
            wrapMode: Text.Wrap
        }
        CaptionText {
            width: parent.width
            topPadding: nudge + 2
            text: Words.text(head.model.since)
            wrapMode: Text.Wrap
        }
    }
    MascotItem {
        x: parent.width - width
        y: -4
        width: 84
        height: 84
        expression: head.model.expression
    }
    Rectangle {
        id: warning
        objectName: "hallWarning"
        y: words.height + 16
        width: parent.width
        height: Math.max(40, sentence.implicitHeight + 22)
        visible: head.model.warning.length > 0
        radius: Theme.radius
        color: Theme.tint(Theme.warn)

        Icon {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            size: 18
            name: "warning"
            color: Theme.warn
        }
        Label {
            id: sentence
            x: 42
            width: parent.width - x - 12
            anchors.verticalCenter: parent.verticalCenter
            text: Words.text(head.model.warning)
            color: Theme.tintText(Theme.warn)
            wrapMode: Text.Wrap
        }
        Accessible.role: Accessible.AlertMessage
        Accessible.name: sentence.text
    }
}
