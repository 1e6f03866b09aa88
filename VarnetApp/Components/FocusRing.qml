import QtQuick
import Varnet

// The ring around its parent, shown for keyboard focus only; rows and squares draw it inside themselves.
RoundBox {
    id: ring

    required property bool shown
    property int cornerRadius: Theme.radius
    property bool inside: false

    anchors.fill: parent
    anchors.margins: inside ? 0 : -4
    radius: inside ? cornerRadius : cornerRadius + 4
    visible: shown
    lineColor: Theme.accent
    lineWidth: 2
}
