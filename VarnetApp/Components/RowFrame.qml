import QtQuick
import Varnet

// The ground of a row in a list: at rest, hovered, pressed, ticked or open.
Item {
    id: frame

    property bool hovered: false
    property bool pressed: false
    property bool ticked: false
    property bool open: false
    property bool focused: false
    // Where the line below it begins.
    property int separatorInset: 84
    // What the mark of an open row is centred on.
    property double band: height

    Separator {
        x: frame.open || frame.ticked ? 0 : frame.separatorInset
        y: frame.height - 1
        width: frame.width - x
        visible: !frame.open && !frame.hovered && !frame.pressed
    }
    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: frame.ticked && !frame.open && !frame.hovered ? 1 : 0
        radius: frame.ticked && !frame.open && !frame.hovered && !frame.pressed ? 0 : Theme.radius
        color: frame.pressed ? Theme.press
             : frame.ticked ? Theme.rowTint
             : frame.open ? Theme.selected
             : frame.hovered ? Theme.hover : "transparent"
        border.color: Theme.controlLine
        border.width: frame.open ? 1 : 0
    }
    Rectangle {
        visible: frame.open
        y: Math.round((frame.band - height) / 2)
        width: 3
        height: 20
        color: Theme.accent
    }
    FocusRing {
        shown: frame.focused
        inside: true
    }
}
