import QtQuick
import QtQuick.Templates as T
import Varnet

// A line that unfolds what is below it.
T.AbstractButton {
    id: line

    required property bool unfolded

    implicitHeight: 30
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            name: line.unfolded ? "down" : "right"
            color: line.hovered ? Theme.text : Theme.muted
        }
        Label {
            x: 22
            width: parent.width - x
            anchors.verticalCenter: parent.verticalCenter
            text: line.text
            font: Theme.bodyMedium
        }
    }
    background: Item {
        FocusRing { shown: line.visualFocus; anchors.leftMargin: -4; anchors.rightMargin: -4; inside: true }
    }

    Keys.onReturnPressed: line.clicked()
    Keys.onEnterPressed: line.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: line.text
    Accessible.checkable: true
    Accessible.checked: line.unfolded
    Accessible.onPressAction: if (line.enabled) line.clicked()
}
