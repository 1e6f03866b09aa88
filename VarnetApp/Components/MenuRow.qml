import QtQuick
import QtQuick.Templates as T
import Varnet

// One line of a menu: a tick for what is chosen, or an icon, then words.
T.MenuItem {
    id: row

    property string iconName: ""
    property bool destructive: false
    // Forces a state for pictures: "hover".
    property string preview: ""

    readonly property color ink: !enabled ? Theme.faint : destructive ? Theme.bad : Theme.text

    implicitWidth: Math.ceil(words.implicitWidth) + 34 + 24
    implicitHeight: 36
    width: ListView.view ? ListView.view.width : implicitWidth
    hoverEnabled: true

    contentItem: Item {
        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: row.checked ? "check" : row.iconName
            color: row.checked ? Theme.accent : row.ink
        }
        Label {
            id: words
            x: 34
            width: Math.max(0, parent.width - x - 12)
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            font: Theme.bodyMedium
            color: row.ink
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.down ? Theme.press : row.highlighted || row.preview === "hover" ? Theme.hover : "transparent"
    }

    Accessible.role: Accessible.MenuItem
    Accessible.name: row.text
    Accessible.checkable: row.checkable
    Accessible.checked: row.checked
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
