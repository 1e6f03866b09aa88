import QtQuick
import QtQuick.Templates as T
import Varnet

T.AbstractButton {
    id: control

    enum Kind { Primary, Secondary, Danger, Ghost, Link }
    enum Size { Small, Regular, Large }

    property int kind: Button.Secondary
    property int size: Button.Regular
    property string iconName: ""
    property string trailingIcon: ""
    // Why it cannot be pressed, told while it is disabled.
    property string disabledReason: ""
    property string help: ""
    property color linkTone: Theme.link
    // Forces a state for pictures: "hover", "pressed" or "focus".
    property string preview: ""

    readonly property bool isLink: kind === Button.Link
    readonly property bool isPrimary: kind === Button.Primary
    readonly property bool isOutlined: kind === Button.Secondary || kind === Button.Danger
    readonly property bool shownPressed: down || preview === "pressed"
    readonly property bool shownHovered: hovered || preview === "hover"
    readonly property color overlay: shownPressed ? (isPrimary ? "#24000000" : Theme.press)
                                   : shownHovered ? (isPrimary ? "#24FFFFFF" : Theme.hover) : "#00000000"
    readonly property color ink: !enabled ? Theme.faint
                               : isPrimary ? Theme.accentInk
                               : kind === Button.Danger ? Theme.bad
                               : isLink ? linkTone : Theme.text

    // What stands beside the words.
    readonly property int taken: (iconName.length > 0 ? 16 : 0) + (trailingIcon.length > 0 ? 16 : 0)
                               + (text.length === 0 ? 0
                                  : (iconName.length > 0 ? 6 : 0) + (trailingIcon.length > 0 ? 6 : 0))

    implicitWidth: Math.ceil(words.implicitWidth) + taken + leftPadding + rightPadding
    implicitHeight: isLink ? 28 : size === Button.Small ? 28 : size === Button.Large ? 40 : 32
    leftPadding: isLink ? 4 : 12
    rightPadding: leftPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

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
                // In a tight place the words take the padding before they are cut.
                width: Math.min(Math.ceil(implicitWidth), Math.max(0, control.width - 8 - control.taken))
                visible: control.text.length > 0
                text: control.text
                font: control.isLink ? Theme.caption : Theme.strong
                line: control.isLink ? Theme.captionLine : Theme.bodyLine
                nudge: control.isLink ? Theme.captionNudge : Theme.bodyNudge
                color: control.ink
            }
            Icon {
                visible: control.trailingIcon.length > 0
                anchors.verticalCenter: parent.verticalCenter
                name: control.trailingIcon
                color: control.ink
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.isLink ? "transparent"
             : !control.enabled ? (control.kind === Button.Ghost ? "transparent" : Theme.fade(Theme.track, 0.75))
             : control.isPrimary ? Theme.cover(Theme.accent, control.overlay)
             : control.isOutlined ? Theme.cover(Theme.raised, control.overlay)
             : control.overlay
        border.color: Theme.controlLine
        border.width: control.enabled && control.isOutlined ? 1 : 0

        Behavior on color {
            enabled: !control.down
            ColorAnimation { duration: Theme.hoverDuration }
        }
        Rectangle {
            visible: control.isLink && (control.shownHovered || control.shownPressed)
            x: control.leftPadding
            y: parent.height / 2 + 8
            width: parent.width - 2 * control.leftPadding
            height: 1
            color: control.ink
        }
        FocusRing { shown: control.enabled && (control.visualFocus || control.preview === "focus") }
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
    Accessible.name: control.text
    Accessible.description: enabled ? help : disabledReason
    Accessible.onPressAction: if (control.enabled) control.clicked()
}
