import QtQuick
import QtQuick.Templates as T
import Varnet

// One word of a segmented control.
T.TabButton {
    id: control

    property bool chosen: false
    property string iconName: ""
    property bool previewHover: false

    readonly property color ink: !enabled ? Theme.faint : chosen || hovered ? Theme.text : Theme.muted

    implicitWidth: Math.ceil(words.implicitWidth) + (iconName.length > 0 ? 22 : 0) + 18
    checkable: false
    autoExclusive: false
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
                font: control.chosen ? Theme.strong : Theme.bodyMedium
                color: control.ink
            }
        }
    }
    background: Rectangle {
        radius: Theme.radiusSegment
        color: control.chosen ? Theme.segment
             : control.down ? Theme.press
             : control.hovered || control.previewHover ? Theme.hover : "transparent"
        border.color: Theme.controlLine
        border.width: control.chosen ? 1 : 0

        Behavior on color {
            ColorAnimation { duration: Theme.slideDuration }
        }
    }

    Accessible.role: Accessible.PageTab
    Accessible.name: control.text
    Accessible.selectable: true
    Accessible.selected: control.chosen
    Accessible.onPressAction: if (control.enabled) control.clicked()
}
