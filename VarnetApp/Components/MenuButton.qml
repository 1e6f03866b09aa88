import QtQuick
import QtQuick.Templates as T
import Varnet

// Opens a menu below itself. Tinted while it stands for a choice that narrows what is shown.
T.AbstractButton {
    id: control

    property Menu menu
    property string iconName: ""
    // What it chooses, for a screen reader; `text` is the present choice.
    required property string label
    property bool compact: false
    property bool tinted: false
    property string preview: ""
    property int openedBy: Qt.OtherFocusReason

    readonly property color overlay: down || menu?.visible === true || preview === "pressed" ? Theme.press
                                   : hovered || preview === "hover" ? Theme.hover : "#00000000"

    readonly property bool worded: !compact && text.length > 0

    implicitWidth: 20 + 16 + (iconName.length > 0 ? 22 : 0) + (worded ? Math.ceil(words.implicitWidth) + 6 : 0)
    implicitHeight: 32
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    onClicked: control.menu.visible ? control.menu.close() : control.menu.popup(control, 0, control.height + 4)
    Keys.onDownPressed: control.clicked()

    Connections {
        target: control.menu
        // The keyboard comes back to where it was, and its ring with it.
        function onClosed() { control.forceActiveFocus(control.openedBy) }
        function onAboutToShow() { control.openedBy = control.focusReason }
    }
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: 6

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: control.iconName.length > 0
                name: control.iconName
                color: control.tinted ? Theme.accent : Theme.text
            }
            Label {
                id: words
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(Math.ceil(implicitWidth), Math.max(0, control.width - 64))
                visible: control.worded
                text: control.text
                font: control.tinted ? Theme.strong : Theme.bodyMedium
            }
            Icon {
                anchors.verticalCenter: parent.verticalCenter
                name: "down"
                color: Theme.muted
            }
        }
    }
    background: Rectangle {
        readonly property color base: control.tinted ? Theme.cover(Theme.surface, Theme.tint(Theme.accent))
                                                     : Theme.surface
        radius: Theme.radius
        color: Theme.cover(base, control.overlay)
        border.color: control.tinted ? Theme.mix(Theme.surface, Theme.accent, 0.55) : Theme.controlLine
        border.width: 1

        FocusRing { shown: control.visualFocus || control.preview === "focus" }
    }

    Accessible.role: Accessible.Button
    Accessible.name: control.label + " " + control.text
    Accessible.onPressAction: if (control.enabled) control.clicked()
}
