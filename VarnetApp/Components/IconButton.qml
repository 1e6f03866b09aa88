import QtQuick
import QtQuick.Templates as T
import Varnet

T.AbstractButton {
    id: control

    required property string iconName
    // Names the button for a screen reader and in its tooltip.
    required property string label
    property string help: label
    property string disabledReason: ""
    // Shown side length; what answers the pointer is never smaller than 28.
    property int side: 28
    property int iconSize: 18
    property color tone: Theme.muted
    property string preview: ""

    readonly property bool shownPressed: down || preview === "pressed"
    readonly property bool shownHovered: hovered || preview === "hover"

    implicitWidth: 28
    implicitHeight: 28
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: label

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: control.iconName
            size: control.iconSize
            color: !control.enabled ? Theme.fade(Theme.faint, 0.4)
                 : control.shownHovered || control.shownPressed ? Theme.text : control.tone
        }
    }
    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: control.side
            height: control.side
            radius: Theme.radius
            color: control.shownPressed ? Theme.press : control.shownHovered ? Theme.hover : "transparent"

            Behavior on color {
                enabled: !control.down
                ColorAnimation { duration: Theme.hoverDuration }
            }
            FocusRing { shown: control.enabled && (control.visualFocus || control.preview === "focus") }
        }
    }

    HoverHandler {
        id: pointer
        enabled: !control.enabled
    }
    HoverTip {
        text: control.enabled ? control.help : control.disabledReason
        wanted: control.hovered || pointer.hovered || control.visualFocus
        atOnce: control.visualFocus
    }

    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: control.label
    Accessible.description: enabled ? help : disabledReason
    Accessible.onPressAction: if (control.enabled) control.clicked()
}
