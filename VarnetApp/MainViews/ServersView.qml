import QtQuick
import Varnet

// The development servers that run.
ActivityPage {
    model: ServerListModel {}
    band: 60
    growsForPills: true
}
