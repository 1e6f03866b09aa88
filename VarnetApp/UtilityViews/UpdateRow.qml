import QtQuick
import QtQuick.Templates as T
import Varnet

// There is a newer version: pressing this gets it.
T.AbstractButton {
    id: row

    property string help: ""

    readonly property color ground: Theme.cover(Theme.surface, Theme.tint(Theme.info))

    implicitHeight: 32
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: "download"
            color: Theme.info
        }
        Label {
            x: 34
            width: Math.max(0, parent.width - x - 34)
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            font: Theme.bodyMedium
        }
        Icon {
            x: parent.width - 10 - width
            anchors.verticalCenter: parent.verticalCenter
            name: "right"
            color: row.hovered ? Theme.text : Theme.muted
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.cover(row.ground, row.down ? Theme.press : row.hovered ? Theme.hover : "#00000000")

        FocusRing { shown: row.visualFocus }
    }

    HoverTip {
        text: row.help
        wanted: row.hovered || row.visualFocus
        atOnce: row.visualFocus
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: row.text
    Accessible.description: row.help
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
