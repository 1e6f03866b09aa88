import QtQuick
import QtQuick.Templates as T
import Varnet

// A folder of the list of added ones.
T.AbstractButton {
    id: line

    required property string title
    required property string path
    property bool chosen: false
    property bool removable: false

    signal removed

    implicitHeight: path.length > 0 ? 44 : 36
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: title

    background: Rectangle {
        radius: Theme.radius
        color: line.down ? Theme.press : line.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: line.visualFocus
            inside: true
        }
    }
    contentItem: Item {
        Icon {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            name: line.chosen ? "check" : "folder"
            color: line.chosen ? Theme.accent : Theme.muted
        }
        Label {
            x: 34
            y: line.path.length > 0 ? 4 : Math.round((line.height - height) / 2)
            width: Math.max(0, parent.width - x - 40)
            text: line.title
            font: line.chosen ? Theme.strong : Theme.bodyMedium
            elide: Text.ElideMiddle
        }
        CaptionText {
            x: 34
            y: 23
            width: Math.max(0, parent.width - x - 40)
            visible: line.path.length > 0
            text: line.path
            elide: Text.ElideMiddle
        }
        IconButton {
            objectName: line.objectName + "Remove"
            x: parent.width - width - 4
            anchors.verticalCenter: parent.verticalCenter
            visible: line.removable
            iconName: "minus"
            iconSize: 16
            label: Words.text("Remove from list")
            onClicked: line.removed()
        }
    }

    Keys.onReturnPressed: line.clicked()
    Keys.onEnterPressed: line.clicked()
    Keys.onDeletePressed: if (line.removable) line.removed()

    Accessible.role: Accessible.RadioButton
    Accessible.name: line.path.length > 0 ? line.path : line.title
    Accessible.checked: line.chosen
    Accessible.onPressAction: line.clicked()
}
