import QtQuick
import Varnet

// A reading in the panel: what it is, its figure and a bar. Its explanation is a tooltip, which the keyboard
// reaches too.
Rectangle {
    id: card

    required property string label
    required property string figure
    required property double fraction
    required property color tone
    property string help: ""

    implicitWidth: 154
    implicitHeight: 62
    radius: Theme.radius
    color: Theme.dark ? Theme.raised : Theme.bg
    border.color: Theme.hairline
    border.width: 1
    activeFocusOnTab: help.length > 0

    CaptionText {
        x: 12
        y: 8
        width: Math.max(0, parent.width - 24)
        text: card.label
    }
    Figure {
        x: 12
        y: 23
        width: Math.max(0, parent.width - 24)
        text: card.figure
        font: Theme.title
        color: Theme.text
    }
    ValueBar {
        x: 12
        y: 50
        width: Math.max(0, parent.width - 24)
        fraction: card.fraction
        tone: card.tone
    }
    FocusRing { shown: card.activeFocus }
    HoverHandler { id: pointer }
    HoverTip {
        text: card.help
        wanted: pointer.hovered || card.activeFocus
        atOnce: card.activeFocus
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: card.label + " " + card.figure
    Accessible.description: card.help
    Accessible.focusable: card.activeFocusOnTab
}
