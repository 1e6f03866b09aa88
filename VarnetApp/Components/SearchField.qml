import QtQuick
import QtQuick.Templates as T
import Varnet

T.TextField {
    id: control

    required property string clearLabel
    property string preview: ""

    readonly property bool keyboardFocus: activeFocus && (focusReason === Qt.TabFocusReason
                                                          || focusReason === Qt.BacktabFocusReason
                                                          || focusReason === Qt.ShortcutFocusReason)

    implicitWidth: 320
    implicitHeight: 32
    leftPadding: 34
    rightPadding: text.length > 0 ? 34 : 12
    verticalAlignment: TextInput.AlignVCenter
    hoverEnabled: true
    activeFocusOnTab: true
    selectByMouse: true
    font: Theme.body
    color: enabled ? Theme.text : Theme.faint
    selectionColor: Theme.fade(Theme.accent, 0.35)
    selectedTextColor: Theme.text
    placeholderTextColor: Theme.muted

    Label {
        x: control.leftPadding
        width: Math.max(0, control.width - control.leftPadding - 6)
        anchors.verticalCenter: parent.verticalCenter
        visible: control.length === 0 && control.preeditText.length === 0
        text: control.placeholderText
        color: control.placeholderTextColor
    }
    Icon {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        color: control.activeFocus ? Theme.text : Theme.muted
    }
    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        visible: control.length > 0
        iconName: "close"
        iconSize: 16
        side: 24
        label: control.clearLabel
        onClicked: control.clear()
    }

    background: Rectangle {
        radius: Theme.radius
        color: Theme.surface
        border.color: control.activeFocus || control.hovered ? Theme.faint : Theme.controlLine
        border.width: 1

        FocusRing { shown: control.keyboardFocus || control.preview === "focus" }
    }

    // Escape empties the field first; an empty one lets it pass to whoever closes things.
    Keys.onEscapePressed: (event) => { event.accepted = control.length > 0; control.clear() }

    Accessible.role: Accessible.EditableText
    Accessible.searchEdit: true
    Accessible.name: control.placeholderText
    Accessible.onPressAction: control.forceActiveFocus(Qt.OtherFocusReason)
}
