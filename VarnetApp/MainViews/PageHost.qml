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
                return null;
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
        id: storage

        StorageView {
            narrow: root.narrow
        }
    }
    Component {
        id: hall

        HallOfFlameView {
            narrow: root.narrow
        }
    }
}
