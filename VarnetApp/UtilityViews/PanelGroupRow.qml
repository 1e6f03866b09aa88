import QtQuick
import Varnet

// One of the busiest groups, with its two figures.
PanelRow {
    id: row

    required property string key
    required property string name
    required property string iconName
    required property string letter
    required property int tileKind
    required property string cpu
    required property string memory
    required property string inspectLabel

    text: name
    help: Words.text(inspectLabel)
    leading: Tile {
        side: 24
        tone: Theme.tileTone(row.tileKind, row.name, Theme.dark)
        letter: row.letter
        iconName: row.iconName
    }
    trailing: [
        Figure {
            width: Math.max(52, implicitWidth)
            alignment: Figure.Right
            text: row.cpu
            font: Theme.bodyMedium
            color: Theme.text
        },
        Figure {
            width: Math.max(66, implicitWidth)
            alignment: Figure.Right
            text: row.memory
            font: Theme.body
            color: Theme.muted
        }
    ]

    Accessible.name: row.name + " " + row.cpu + " " + row.memory
}
