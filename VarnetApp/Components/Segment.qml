import QtQuick
import QtQuick.Templates as T
import Varnet

// One word of a segmented control.
T.AbstractButton {
    id: control

    property string iconName: ""
    property bool previewHover: false

    readonly property color ink: !enabled ? Theme.faint : checked || hovered ? Theme.text : Theme.muted

    implicitWidth: Math.ceil(words.implicitWidth) + (iconName.length > 0 ? 22 : 0) + 18
    hoverEnabled: true

    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: 6

            Icon {
                visible: control.iconName.length > 0
                anchors.verticalCenter: parent.verticalCenter
                name: control.iconName
                color: control.ink
            }
            Label {
                id: words
                anchors.verticalCenter: parent.verticalCenter
                text: control.text
                font: control.checked ? Theme.strong : Theme.bodyMedium
                color: control.ink
            }
        }
    }
    background: Rectangle {
        radius: Theme.radiusSegment
        color: control.checked ? Theme.segment
             : control.down ? Theme.press
             : control.hovered || control.previewHover ? Theme.hover : "transparent"
        border.color: Theme.controlLine
        border.width: control.checked ? 1 : 0

        Behavior on color {
            ColorAnimation { duration: Theme.slideDuration }
        }
    }

    Accessible.role: Accessible.PageTab
    Accessible.name: control.text
    Accessible.selectable: true
    Accessible.selected: control.checked
    Accessible.onPressAction: if (control.enabled) control.clicked()
}
