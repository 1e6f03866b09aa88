import QtQuick
import QtQuick.Templates as T
import Varnet

T.Menu {
    id: menu

    // As wide as its widest row.
    implicitWidth: 8 + Math.max(152, ...Array.from({ length: count }, (_, i) => itemAt(i).implicitWidth))
    implicitHeight: list.implicitHeight + topPadding + bottomPadding
    margins: 8
    padding: 4
    modal: false
    // A press on the button that opened it is the button's: it closes the menu instead of opening it anew.
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    delegate: MenuRow {}

    contentItem: ListView {
        id: list
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: contentHeight > height
        clip: interactive
        currentIndex: menu.currentIndex
        keyNavigationEnabled: false
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
