import QtQuick
import Varnet

// A map of what takes room. Hovering a tile tells all about it; arrow keys move a ring, Enter opens, Backspace
// goes up. To a screen reader it is a list.
TreemapItem {
    id: map

    Accessible.role: Accessible.List
    Accessible.name: map.label

    // In the gap between the tiles.
    Item {
        x: map.currentFrame.x - 2
        y: map.currentFrame.y - 2
        width: map.currentFrame.width + 4
        height: map.currentFrame.height + 4

        FocusRing {
            shown: map.focusVisible && map.currentFrame.width > 0
            inside: true
            cornerRadius: Theme.radius + 2
        }
        HoverTip {
            text: map.currentText
            wanted: map.focusVisible && !map.pointed && map.currentFrame.width < 112
            atOnce: true
        }
    }
    Item {
        x: map.hoveredFrame.x
        y: map.hoveredFrame.y
        width: map.hoveredFrame.width
        height: map.hoveredFrame.height

        HoverTip {
            text: map.hoveredText
            wanted: map.pointed
        }
    }
}
