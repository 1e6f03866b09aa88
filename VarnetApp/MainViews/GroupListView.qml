import QtQuick
import Varnet

// All sources, apps or projects, whichever page is open.
ActivityPage {
    model: GroupListModel {}
    band: 52
}
