import QtQuick
import Varnet

// A surface that holds one subject.
Rectangle {
    property bool hovered: false

    radius: Theme.radiusCard
    color: hovered ? Theme.cover(Theme.surface, Theme.hover) : Theme.surface
    border.color: Theme.hairline
    border.width: 1

    Behavior on color {
        ColorAnimation { duration: Theme.hoverDuration }
    }
}
