import QtQuick
import Varnet

// Shows the page that the store names. A page lives as long as it is shown.
FocusScope {
    id: root

    required property bool narrow
    readonly property string page: Store.page

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: {
            switch (root.page) {
            case "overview":
                return overview;
            case "servers":
                return servers;
            case "battery":
                return battery;
            case "storage":
                return storage;
            case "sources":
            case "apps":
            case "projects":
                return groups;
            case "hall":
                return hall;
            default:
                return later;
            }
        }
    }

    Component {
        id: overview

        OverviewView {
            narrow: root.narrow
        }
    }
    Component {
        id: groups

        GroupListView {
            narrow: root.narrow
        }
    }
    Component {
        id: servers

        ServersView {
            narrow: root.narrow
        }
    }
    Component {
        id: battery

        BatteryView {
            narrow: root.narrow
        }
    }
    Component {
        id: hall

        HallOfFlameView {
            narrow: root.narrow
        }
    }
    Component {
        id: storage

        StorageView {
            narrow: root.narrow
        }
    }
    Component {
        id: later

        // For a page that this version does not know.
        Item {
            EmptyState {
                anchors.centerIn: parent
                width: Math.min(480, parent.width - 48)
                iconName: "hourglass"
                title: Words.text("Not here yet.")
                note: Words.text("This page arrives with a later version.")
            }
        }
    }
}
