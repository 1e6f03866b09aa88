import QtQuick
import QtQuick.Templates as T
import Varnet

// An explanation that opens beside what it explains. Escape or a press elsewhere closes it.
T.Popup {
    id: panel

    required property string title
    default property alias body: column.data

    property Item returnTo: null
    property int returnReason: Qt.PopupFocusReason

    // Opens below the upper part of an item, or above it where the window ends too soon; a second time closes.
    function toggleAt(item: Item, below: int): void {
        if (opened && parent === item) {
            close();
            return;
        }
        parent = item;
        const top = item.mapToItem(null, 0, 0).y;
        const fitsBelow = top + below + height + bottomMargin <= item.Window.height;
        const fitsAbove = top - 4 - height >= topMargin;
        y = fitsBelow || !fitsAbove ? below : -4 - height;
        open();
    }

    x: parent ? parent.width - width : 0
    width: 320
    height: implicitHeight
    implicitHeight: 16 + 24 + 8 + column.implicitHeight + 16
    margins: 8
    focus: true
    onAboutToShow: {
        returnTo = parent?.Window.activeFocusItem ?? null
        returnReason = (returnTo as T.Control)?.focusReason ?? Qt.PopupFocusReason
    }
    // Unless the press that closed it has given the keyboard to something else.
    onClosed: if (returnTo && !(parent?.Window.activeFocusItem as T.Control))
                  returnTo.forceActiveFocus(returnReason)
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Item {
        Accessible.role: Accessible.Dialog
        Accessible.name: panel.title

        TitleText {
            x: 16
            y: 16
            width: parent.width - 32
            text: panel.title
        }
        Column {
            id: column
            x: 16
            y: 48
            width: parent.width - 32
            spacing: 8
        }
    }
    background: Rectangle {
        radius: Theme.radiusCard
        color: Theme.raised
        border.color: Theme.controlLine
        border.width: 1
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hoverDuration }
    }
}
