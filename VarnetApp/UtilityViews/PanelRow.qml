import QtQuick
import QtQuick.Templates as T
import Varnet

// A line of the panel that leads somewhere. What it looks like at the left and the right is its user's; the
// ground that answers the pointer reaches a little beyond the words.
T.AbstractButton {
    id: row

    // What pressing it does.
    property string help: ""
    property string preview: ""
    property alias leading: leadingArea.data
    property alias trailing: trailingArea.data

    implicitHeight: 36
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        Item {
            id: leadingArea
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 24
        }
        Label {
            x: 32
            width: Math.max(0, trailingArea.x - x - 8)
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            font: Theme.bodyMedium
        }
        Row {
            id: trailingArea
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: -8
            anchors.rightMargin: -8
            radius: Theme.radius
            color: row.down ? Theme.press : row.hovered || row.preview === "hover" ? Theme.hover : "transparent"

            Behavior on color {
                enabled: !row.down
                ColorAnimation { duration: Theme.hoverDuration }
            }
            FocusRing { shown: row.visualFocus || row.preview === "focus"; inside: true }
        }
    }

    HoverTip {
        text: row.help
        wanted: row.hovered
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: row.text
    Accessible.description: row.help
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
