import QtQuick
import Varnet

// What the colours stand for.
Flow {
    id: legend

    readonly property list<string> names: [Words.text("Dependencies"), Words.text("Build caches"),
                                           Words.text("Git data"), Words.text("Project files")]
    readonly property list<color> tones: [Theme.emberFill, Theme.accent, Theme.dev, Theme.faint]

    spacing: 16

    Repeater {
        model: legend.names

        Item {
            id: entry

            required property int index
            required property string modelData

            width: words.implicitWidth + 14
            height: 22

            Rectangle {
                y: 7
                width: 8
                height: 8
                radius: 2
                color: legend.tones[entry.index]
            }
            CaptionText {
                id: words
                x: 14
                y: 4
                text: entry.modelData
            }
        }
    }
}
