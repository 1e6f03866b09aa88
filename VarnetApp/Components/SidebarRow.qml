import QtQuick
import QtQuick.Templates as T
import Varnet

// A page in the sidebar: its icon, its name and how much is in it; in the narrow rail the icon alone.
T.TabButton {
    id: row

    required property string iconName
    property string count: ""
    property bool selected: false
    property bool rail: false
    property string preview: ""

    readonly property bool shownHovered: hovered || preview === "hover"
    readonly property color ink: selected || shownHovered ? Theme.text : Theme.muted

    implicitWidth: rail ? 40 : 184
    implicitHeight: 36
    checkable: false
    autoExclusive: false
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        Icon {
            x: row.rail ? 11 : 12
            anchors.verticalCenter: parent.verticalCenter
            size: 18
            name: row.iconName
            color: row.selected ? Theme.accent : row.ink
        }
        Label {
            x: 40
            width: Math.max(0, parent.width - x - 12 - (figure.text.length > 0 ? figure.width + 8 : 0))
            anchors.verticalCenter: parent.verticalCenter
            visible: !row.rail
            text: row.text
            font: row.selected ? Theme.strong : Theme.bodyMedium
            color: row.ink
        }
        Figure {
            id: figure
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: !row.rail
            text: row.count
            font: Theme.caption
            color: row.ink
            alignment: Figure.Right
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.down ? Theme.press
             : row.selected ? Theme.selected : row.shownHovered ? Theme.hover : "transparent"
        border.color: Theme.controlLine
        border.width: row.selected ? 1 : 0

        Behavior on color {
            enabled: !row.down
            ColorAnimation { duration: Theme.hoverDuration }
        }
        Rectangle {
            visible: row.selected
            y: (parent.height - height) / 2
            width: 3
            height: 16
            color: Theme.accent
        }
        FocusRing { shown: row.visualFocus || row.preview === "focus" }
    }

    HoverTip {
        text: row.rail ? row.text : ""
        wanted: row.hovered || row.visualFocus
        atOnce: row.visualFocus
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.PageTab
    Accessible.name: row.count.length > 0 ? row.text + " " + row.count : row.text
    Accessible.selectable: true
    Accessible.selected: row.selected
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
