import QtQuick
import Varnet

// A setting in a card: words at the left, what sets it at the right. Give it `pressable` when the row itself
// leads somewhere; it then shows a chevron. Not a button by type: to a screen reader that would be one even
// where nothing can be pressed.
Item {
    id: row

    required property string title
    property string note: ""
    property bool pressable: false
    property string pressIcon: "right"
    property bool separated: true
    default property alias trailing: area.data

    signal clicked

    implicitHeight: Math.max(48, words.implicitHeight + 24)
    activeFocusOnTab: pressable

    MouseArea {
        id: pointer
        anchors.fill: parent
        hoverEnabled: row.pressable
        onClicked: row.clicked()
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: 4
        radius: Theme.radius
        visible: row.pressable
        color: pointer.pressed ? Theme.press : pointer.containsMouse ? Theme.hover : "transparent"

        FocusRing { shown: row.activeFocus; inside: true }
    }
    Column {
        id: words
        x: 16
        width: Math.max(0, parent.width - x - 16 - (area.width > 0 ? area.width + 16 : row.pressable ? 32 : 0))
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
        color: pointer.containsMouse ? Theme.text : Theme.muted
    }
    Separator {
        visible: row.separated
        x: 16
        y: parent.height - 1
        width: parent.width - 32
    }

    Keys.onSpacePressed: (event) => pressByKey(event)
    Keys.onReturnPressed: (event) => pressByKey(event)
    Keys.onEnterPressed: (event) => pressByKey(event)

    function pressByKey(event: KeyEvent): void {
        event.accepted = row.pressable;
        if (row.pressable && !event.isAutoRepeat)
            row.clicked();
    }

    Accessible.role: pressable ? Accessible.Button : Accessible.Grouping
    Accessible.name: row.title
    Accessible.description: row.note
    Accessible.onPressAction: if (row.enabled && row.pressable) row.clicked()
}
