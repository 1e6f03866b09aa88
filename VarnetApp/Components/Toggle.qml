import QtQuick
import QtQuick.Templates as T
import Varnet

T.Switch {
    id: control

    // Names the toggle for a screen reader; the words beside it belong to its row.
    required property string label
    property string disabledReason: ""
    property string preview: ""

    readonly property double strength: enabled ? 1 : 0.4

    implicitWidth: 40
    implicitHeight: 24
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: label

    indicator: Item {
        implicitWidth: 40
        implicitHeight: 24

        RoundBox {
            anchors.fill: parent
            radius: 12
            color: Theme.fade(control.checked ? Theme.accent : Theme.track, control.strength)
            lineColor: Theme.fade(control.hovered ? Theme.muted : Theme.faint, control.strength)
            lineWidth: control.checked ? 0 : 1.5

            Behavior on color {
                ColorAnimation { duration: Theme.slideDuration }
            }
        }
        RoundBox {
            id: knob
            readonly property int side: control.checked ? 18 : 14
            x: control.checked ? 19 : 5
            anchors.verticalCenter: parent.verticalCenter
            width: side
            height: side
            radius: side / 2
            color: Theme.fade(control.checked ? Theme.accentInk : Theme.faint, control.strength)

            Behavior on x {
                NumberAnimation { duration: Theme.slideDuration; easing.type: Easing.OutCubic }
            }
        }
        FocusRing {
            cornerRadius: 12
            shown: control.enabled && (control.visualFocus || control.preview === "focus")
        }
    }

    HoverHandler {
        id: pointer
        enabled: !control.enabled
    }
    HoverTip {
        text: control.enabled ? "" : control.disabledReason
        wanted: pointer.hovered
    }

    Keys.onReturnPressed: { control.toggle(); control.toggled() }

    Accessible.role: Accessible.CheckBox
    Accessible.name: control.label
    Accessible.description: enabled ? "" : disabledReason
    Accessible.checkable: true
    Accessible.checked: control.checked
    Accessible.onPressAction: { control.toggle(); control.toggled() }
    Accessible.onToggleAction: { control.toggle(); control.toggled() }
}
