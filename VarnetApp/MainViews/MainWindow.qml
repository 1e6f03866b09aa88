import QtQuick
import Varnet

// What the main window holds: the sidebar and the page, or the welcome until that is done.
FocusScope {
    id: root

    readonly property bool rail: width < 880

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
        visible: Store.hasOnboarded
        anchors {
            left: sidebar.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
    }

    Loader {
        active: !Store.hasOnboarded
        anchors.fill: parent
        sourceComponent: OnboardingView {}
    }
}
