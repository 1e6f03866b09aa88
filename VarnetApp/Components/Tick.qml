import QtQuick
import QtQuick.Templates as T
import Varnet

// A tick box of three states. `partial` is shown for a group that is ticked in part; pressing it asks for all.
T.CheckBox {
    id: control

    // Names the box for a screen reader; the words beside it belong to its row.
    required property string label
    property bool ticked: false
    property bool partial: false
    property string help: ""
    property string disabledReason: ""
    property string preview: ""

    readonly property bool filled: ticked || partial
    readonly property double strength: enabled ? 1 : 0.4

    // The user wants it so; the owner sets `ticked`.
    signal wanted(bool ticked)

    implicitWidth: 28
    implicitHeight: 28
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: label
    tristate: true
    checkState: ticked ? Qt.Checked : partial ? Qt.PartiallyChecked : Qt.Unchecked
    // A press alone changes nothing.
    nextCheckState: () => checkState
    onClicked: control.wanted(!control.ticked)

    contentItem: Item {
        RoundBox {
            anchors.centerIn: parent
            width: 18
            height: 18
            radius: Theme.radiusTick
            color: control.filled ? Theme.fade(Theme.accent, control.strength)
                 : control.down || control.preview === "pressed" ? Theme.press
                 : control.hovered || control.preview === "hover" ? Theme.hover : "transparent"
            lineColor: Theme.fade(control.hovered || control.preview === "hover" ? Theme.muted : Theme.faint,
                                  control.strength)
            lineWidth: control.filled ? 0 : 1.5

            Mark {
                anchors.fill: parent
                visible: control.filled
                dash: control.partial && !control.ticked
                color: Theme.fade(Theme.accentInk, control.enabled ? 1 : 0.6)
            }
            FocusRing {
                cornerRadius: Theme.radiusTick
                shown: control.enabled && (control.visualFocus || control.preview === "focus")
            }
        }
    }

    HoverHandler {
        id: pointer
        enabled: !control.enabled
    }
    HoverTip {
        text: control.enabled ? control.help : control.disabledReason
        wanted: control.hovered || pointer.hovered
    }

    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Accessible.role: Accessible.CheckBox
    Accessible.name: control.label
    Accessible.description: enabled ? help : disabledReason
    Accessible.checkable: true
    Accessible.checked: control.ticked
    Accessible.checkStateMixed: control.partial && !control.ticked
    Accessible.onPressAction: if (control.enabled) control.clicked()
    Accessible.onToggleAction: if (control.enabled) control.clicked()
}
