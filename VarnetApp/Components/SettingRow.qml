import QtQuick
import QtQuick.Templates as T
import Varnet

// A setting in a card: words at the left, what sets it at the right. Give it `pressable` when the row itself
// leads somewhere; it then shows a chevron.
T.AbstractButton {
    id: row

    required property string title
    property string note: ""
    property bool pressable: false
    property string pressIcon: "right"
    property bool separated: true
    default property alias trailing: area.data

    implicitHeight: Math.max(48, words.implicitHeight + 24)
    hoverEnabled: pressable
    focusPolicy: pressable ? Qt.StrongFocus : Qt.NoFocus
    text: title

    contentItem: Item {
        Column {
            id: words
            x: 16
            width: Math.max(0, parent.width - x - 16 - (area.width > 0 ? area.width + 16 : 0))
            anchors.verticalCenter: parent.verticalCenter

            Label {
                width: parent.width
                text: row.title
                font: Theme.bodyMedium
                color: row.enabled ? Theme.text : Theme.faint
                wrapMode: Text.Wrap
            }
            CaptionText {
                width: parent.width
                visible: text.length > 0
                text: row.note
                wrapMode: Text.Wrap
            }
        }
        Row {
            id: area
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8
        }
        Icon {
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            name: row.pressable ? row.pressIcon : ""
            color: row.hovered ? Theme.text : Theme.muted
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: 4
            radius: Theme.radius
            visible: row.pressable
            color: row.down ? Theme.press : row.hovered ? Theme.hover : "transparent"

            FocusRing { shown: row.visualFocus; inside: true }
        }
        Separator {
            visible: row.separated
            x: 16
            y: parent.height - 1
            width: parent.width - 32
        }
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: pressable ? Accessible.Button : Accessible.Grouping
    Accessible.name: row.title
    Accessible.description: row.note
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
