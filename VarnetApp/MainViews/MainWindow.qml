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

        Column {
            id: toasts

            readonly property int widest: Math.min(560, parent.width - 48)

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 24
            spacing: 8
            z: 1

            BadgeToast {
                anchors.horizontalCenter: parent.horizontalCenter
                widest: toasts.widest
            }
            ActionToast {
                anchors.horizontalCenter: parent.horizontalCenter
                widest: toasts.widest
            }
        }
    }

    Loader {
        active: !Store.hasOnboarded
        focus: active
        anchors.fill: parent
        sourceComponent: OnboardingView {}
    }

    RoastSheet { report: RoastSheetModel {} }
    ActionSheets {}

    WindowKeys { pages: sidebar.pages }
}
