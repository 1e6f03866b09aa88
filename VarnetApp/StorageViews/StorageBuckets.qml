pragma ComponentBehavior: Bound

import QtQuick
import Varnet

// What a project's space is for: one bar of all of it, and a line for each part.
Column {
    id: buckets

    required property var model
    required property string size

    spacing: 0

    Item {
        width: parent.width
        height: 24

        Label {
            y: 2
            text: Words.text("Allocated")
            color: Theme.muted
        }
        Figure {
            x: parent.width - width
            alignment: Figure.Right
            text: buckets.size
            font: Theme.title
            color: Theme.text
        }

        Accessible.role: Accessible.StaticText
        Accessible.name: Words.text("Allocated") + " " + buckets.size
    }
    Row {
        id: bar

        readonly property int count: parts.count

        width: parent.width
        height: count > 0 ? 20 : 0
        topPadding: 6
        spacing: 2

        Repeater {
            id: parts
            model: buckets.model

            RoundBox {
                required property double share
                required property string tone

                width: Math.max(3, Math.round((bar.width - 2 * (parts.count - 1)) * share))
                height: 8
                radius: 3
                color: Theme[tone]
            }
        }
    }
    Grid {
        id: grid

        width: parent.width
        columns: 2
        columnSpacing: 32

        Repeater {
            model: buckets.model

            Item {
                id: line

                required property string label
                required property string words
                required property string tone

                width: Math.floor((buckets.width - grid.columnSpacing) / 2)
                height: 24

                Rectangle {
                    y: 8
                    width: 8
                    height: 8
                    radius: 2
                    color: Theme[line.tone]
                }
                Label {
                    x: 16
                    y: 2
                    width: Math.max(0, number.x - 12 - x)
                    text: Words.text(line.label)
                }
                Figure {
                    id: number
                    x: parent.width - width
                    y: 2
                    alignment: Figure.Right
                    text: line.words
                    font: Theme.body
                    color: Theme.text
                }

                Accessible.role: Accessible.StaticText
                Accessible.name: Words.text(line.label) + " " + line.words
            }
        }
    }
}
