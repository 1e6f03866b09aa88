import QtQuick
import Varnet

// Shows the page that the store names. A page lives as long as it is shown.
Loader {
    id: root

    readonly property string page: Store.page

    sourceComponent: {
        switch (page) {
        case "overview":
            return overview;
        case "servers":
            return servers;
        case "sources":
        case "apps":
        case "projects":
            return groups;
        default:
            return null;
        }
    }

    Component {
        id: overview

        OverviewView {}
    }
    Component {
        id: groups

        GroupListView {}
    }
    Component {
        id: servers

        ServersView {}
    }
}
