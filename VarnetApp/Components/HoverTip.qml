import QtQuick
import Varnet

// A tooltip that exists only while it is wanted: after half a second of hover, at once for the keyboard.
Loader {
    id: loader

    required property string text
    required property bool wanted
    property bool atOnce: false

    anchors.fill: parent
    active: wanted && text.length > 0
    sourceComponent: ToolTip {
        text: loader.text
        delay: loader.atOnce ? 0 : 500
        visible: loader.active
    }
}
