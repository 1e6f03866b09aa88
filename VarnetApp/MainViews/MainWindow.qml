import QtQuick
import Varnet

// What the main window holds: the sidebar and the page, or the welcome until that is done.
FocusScope {
    id: root

    readonly property bool rail: width < 880

    focus: true

    Rectangle {
        anchors.fill: parent
        color: Theme.bg
    }

    AppSidebar {
        id: sidebar

        rail: root.rail
        visible: Store.hasOnboarded
        width: root.rail ? 64 : 208
        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
        }
    }

    PageHost {
        focus: Store.hasOnboarded
        narrow: root.rail
        visible: Store.hasOnboarded
        anchors {
            left: sidebar.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }

        ActionToast {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 24
            widest: Math.min(560, parent.width - 48)
        }
    }

    Loader {
        active: !Store.hasOnboarded
        focus: active
        anchors.fill: parent
        sourceComponent: OnboardingView {}
    }

    RoastSheet { model: RoastSheetModel {} }
    ActionSheets {}

    WindowKeys { pages: sidebar.pages }
}
