import QtQuick
import QtQuick.Templates as T
import Varnet

// On or off, for a setting that takes effect at once.
T.CheckBox {
    id: control

    // Names the toggle for a screen reader; the words beside it belong to its row.
    required property string label
    property bool turnedOn: false
    property string disabledReason: ""
    property string preview: ""

    readonly property double strength: enabled ? 1 : 0.4

    // The user wants it so; the owner sets `turnedOn`.
    signal wanted(bool on)

    implicitWidth: 40
    implicitHeight: 24
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: label
    checkState: turnedOn ? Qt.Checked : Qt.Unchecked
    // A press alone changes nothing.
    nextCheckState: () => checkState
    onClicked: control.wanted(!control.turnedOn)

    contentItem: Item {
        implicitWidth: 40
        implicitHeight: 24

        RoundBox {
            anchors.fill: parent
            radius: 12
            color: Theme.fade(control.turnedOn ? Theme.accent : Theme.track, control.strength)
            lineColor: Theme.fade(control.hovered ? Theme.muted : Theme.faint, control.strength)
            lineWidth: control.turnedOn ? 0 : 1.5

            Behavior on color {
                ColorAnimation { duration: Theme.slideDuration }
            }
        }
        RoundBox {
            id: knob
            readonly property int side: control.turnedOn ? 18 : 14
            x: control.turnedOn ? 19 : 5
            anchors.verticalCenter: parent.verticalCenter
            width: side
            height: side
            radius: side / 2
            color: Theme.fade(control.turnedOn ? Theme.accentInk : Theme.faint, control.strength)

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

    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Accessible.role: Accessible.CheckBox
    Accessible.name: control.label
    Accessible.description: enabled ? "" : disabledReason
    Accessible.checkable: true
    Accessible.checked: control.turnedOn
    Accessible.onPressAction: if (control.enabled) control.clicked()
    Accessible.onToggleAction: if (control.enabled) control.clicked()
}
