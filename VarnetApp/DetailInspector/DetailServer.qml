import QtQuick
import QtQuick.Templates as T
import Varnet

// A running server of the inspected group: it opens its own details and has a stop button.
T.ItemDelegate {
    id: row

    required property string name
    required property string ports
    required property bool stoppable
    required property string stopReason

    signal opened
    signal stopRequested

    implicitHeight: 36
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    onClicked: row.opened()

    contentItem: Item {
        Tile {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            side: 22
            tone: Theme.dev
            iconName: "servers"
        }
        StrongText {
            id: words
            x: 40
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), stop.x - x - port.width - 14))
            text: row.name
        }
        Pill {
            id: port
            x: words.x + words.width + 6
            anchors.verticalCenter: parent.verticalCenter
            visible: row.ports.length > 0
            small: true
            kind: Pill.Port
            text: row.ports
        }
        IconButton {
            id: stop
            x: parent.width - width - 4
            anchors.verticalCenter: parent.verticalCenter
            iconName: "stop"
            label: Words.text("Stop server")
            help: Words.text("Review this server and its workers before stopping")
            enabled: row.stoppable
            disabledReason: row.stopReason
            onClicked: row.stopRequested()
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.down ? Theme.press : row.hovered ? Theme.hover : "transparent"

        FocusRing { shown: row.visualFocus; inside: true }
    }
    HoverTip {
        text: Words.text("Open server details")
        wanted: row.hovered && !stop.hovered || row.visualFocus
        atOnce: row.visualFocus
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.ListItem
    Accessible.name: row.name + " " + row.ports
    Accessible.description: Words.text("Open server details")
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
