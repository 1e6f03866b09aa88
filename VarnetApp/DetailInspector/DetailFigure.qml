import QtQuick
import Varnet

// One figure with its share of the machine and the explanation behind its information button.
Rectangle {
    id: figure

    required property string label
    required property string value
    required property string help
    required property double share
    required property color tone

    implicitWidth: 144
    implicitHeight: 64
    radius: Theme.radius
    color: Theme.dark ? Theme.raised : Theme.bg

    CaptionText {
        x: 12
        y: 8
        width: Math.max(0, info.x - x)
        text: figure.label
    }
    IconButton {
        id: info
        x: parent.width - width - 3
        y: 2
        side: 24
        iconName: "info"
        iconSize: 14
        label: Words.text("About %1").arg(figure.label)
        help: figure.help
    }
    Figure {
        x: 12
        y: 25
        text: figure.value
        font: Theme.title
        color: Theme.text
    }
    ValueBar {
        x: 12
        y: 53
        width: parent.width - 24
        fraction: figure.share
        tone: figure.tone
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value
    Accessible.description: help
}
