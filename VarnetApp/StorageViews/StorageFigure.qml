import QtQuick
import QtQuick.Templates as T
import Varnet

// A figure and what it is called. What it means is told to the pointer and to the keyboard.
T.Control {
    id: figure

    required property string label
    required property string value
    required property string help
    property color tone: Theme.text

    implicitWidth: Math.max(words.implicitWidth + 20, number.implicitWidth)
    implicitHeight: 44
    hoverEnabled: true
    focusPolicy: Qt.TabFocus

    contentItem: Item {
        CaptionText {
            id: words
            y: 1
            text: figure.label
        }
        Icon {
            x: words.implicitWidth + 6
            y: 2
            size: 14
            name: "info"
            color: figure.hovered ? Theme.text : Theme.muted
        }
        Figure {
            id: number
            y: 17
            text: figure.value
            font: Theme.title
            color: figure.tone
        }
        FocusRing { shown: figure.visualFocus }
    }
    HoverTip {
        text: figure.help
        wanted: figure.hovered || figure.visualFocus
        atOnce: figure.visualFocus
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: figure.label + " " + figure.value
    Accessible.description: figure.help
}
