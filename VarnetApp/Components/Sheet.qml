import QtQuick
import QtQuick.Templates as T
import Varnet

// A question that must be answered before anything else: words, then buttons in a foot. Escape closes it, the
// keyboard stays inside.
T.Popup {
    id: sheet

    required property string title
    default property alias body: column.data
    property alias foot: footArea.data
    // What holds the focus when the sheet opens.
    property Item initialFocus: null
    property int sheetWidth: 480
    // Names the cross that closes the sheet; without words there is none.
    property string closeLabel: ""

    readonly property int roomAround: 24
    readonly property int bottomGap: footArea.visible ? 16 : 24
    readonly property int tallest: parent ? parent.height - 2 * roomAround : 720

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) + shift : 0
    width: parent ? Math.min(sheetWidth, parent.width - 2 * roomAround) : sheetWidth
    height: Math.min(tallest, 24 + 24 + 12 + column.implicitHeight + bottomGap + (footArea.visible ? 65 : 0))
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onAboutToShow: {
        returnTo = (parent as Item)?.Window.activeFocusItem ?? null
        returnReason = (returnTo as T.Control)?.focusReason ?? Qt.PopupFocusReason
    }
    onClosed: if (returnTo) returnTo.forceActiveFocus(returnReason)
    onOpened: if (initialFocus) initialFocus.forceActiveFocus(Qt.TabFocusReason)

    property int shift: 0
    // What had the keyboard before, and gets it back.
    property Item returnTo: null
    property int returnReason: Qt.PopupFocusReason

    contentItem: Item {
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

        TitleText {
            x: 24
            y: 24
            width: parent.width - 48 - (cross.visible ? 32 : 0)
            text: sheet.title
        }
        IconButton {
            id: cross
            x: parent.width - 24 - 24
            y: 22
            visible: sheet.closeLabel.length > 0
            iconName: "close"
            label: sheet.closeLabel
            help: ""
            onClicked: sheet.close()
        }
        Flickable {
            id: scroller
            x: 24
            y: 60
            width: parent.width - 48
            height: parent.height - y - (footArea.visible ? 65 : 0)
            contentHeight: column.implicitHeight + sheet.bottomGap
            interactive: contentHeight > height
            clip: interactive
            boundsBehavior: Flickable.StopAtBounds
            // Beside the words, in the sheet's own margin.
            T.ScrollBar.vertical: ScrollThumb {
                parent: scroller.parent
                x: parent.width - width
                y: scroller.y
                height: scroller.height
            }

            Column {
                id: column
                width: scroller.width
                spacing: 12
            }
        }
        Separator {
            visible: footArea.visible
            y: parent.height - 65
            width: parent.width
            color: Theme.hairline
        }
        Item {
            id: footArea
            visible: children.length > 0
            x: 24
            y: parent.height - 64
            width: parent.width - 48
            height: 64
        }
    }
    background: Rectangle {
        radius: Theme.radiusCard
        color: Theme.raised
        border.color: Theme.controlLine
        border.width: 1
    }
    T.Overlay.modal: Rectangle {
        color: Theme.scrim

        Behavior on opacity {
            NumberAnimation { duration: Theme.scrimDuration }
        }
    }
    enter: Transition {
        NumberAnimation { property: "shift"; from: 8; to: 0; duration: Theme.sheetDuration; easing.type: Easing.OutCubic }
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.sheetDuration }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; to: 0; duration: Theme.scrimDuration }
    }
}
