import QtQuick
import Varnet

// What the panel can do besides: share, and a menu of the rest.
Item {
    id: foot

    required property bool canCheckForUpdates

    signal shareRequested
    signal overviewRequested
    signal settingsRequested
    signal updateCheckRequested
    signal feedbackRequested
    signal quitRequested

    implicitHeight: 57

    Separator { width: parent.width }
    Button {
        objectName: "share"
        x: 12
        y: 13
        width: Math.max(0, more.x - 8 - x)
        text: Words.text("Share report")
        help: Words.text("Preview your Mac’s roast, then save or share it")
        iconName: "share"
        onClicked: foot.shareRequested()
    }
    Button {
        id: more
        objectName: "more"
        x: parent.width - 12 - width
        y: 13
        width: 32
        iconName: "dots"
        help: Words.text("More")
        onClicked: if (menu.visible) menu.close(); else menu.popup(more, more.width - menu.width, -menu.height - 4)
        Keys.onUpPressed: menu.popup(more, more.width - menu.width, -menu.height - 4)

        Accessible.role: Accessible.ButtonMenu
        Accessible.name: help
        Accessible.description: ""
    }
    Menu {
        id: menu
        objectName: "moreMenu"

        MenuRow {
            objectName: "openOverview"
            text: Words.text("Open overview")
            iconName: "overview"
            onTriggered: foot.overviewRequested()
        }
        MenuRow {
            objectName: "openSettings"
            text: Words.text("Settings")
            iconName: "settings"
            onTriggered: foot.settingsRequested()
        }
        MenuRow {
            objectName: "checkForUpdates"
            text: Words.text("Check for Updates")
            iconName: "download"
            enabled: foot.canCheckForUpdates
            onTriggered: foot.updateCheckRequested()
        }
        MenuRow {
            objectName: "sendFeedback"
            text: Words.text("Send feedback")
            iconName: "heart"
            onTriggered: foot.feedbackRequested()
        }
        MenuRow {
            objectName: "quit"
            text: Words.text("Quit Varnet")
            iconName: "close"
            onTriggered: foot.quitRequested()
        }
    }
}
