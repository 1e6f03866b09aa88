import QtQuick
import QtQuick.Templates as T
import Varnet

T.Menu {
    id: menu

    implicitWidth: Math.max(160, contentItem.contentItem.childrenRect.width + 8)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 8
    padding: 4
    modal: false
    // A press on the button that opened it is the button's: it closes the menu instead of opening it anew.
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    delegate: MenuRow {}

    contentItem: ListView {
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
