import QtQuick
import Varnet

// The records, and a word on how little they matter.
Column {
    id: section

    required property HallModel model

    readonly property int columns: width >= 720 ? 2 : 1
    readonly property bool stacked: title.titleWidth + 16 + note.implicitWidth > width

    Item {
        width: parent.width
        height: section.stacked ? 24 + 2 + note.height : 24

        SectionHeading {
            id: title
            width: Math.min(titleWidth, parent.width)
            title: Words.text("Personal bests. Questionable honours.")
        }
        Label {
            id: note
            x: section.stacked ? 0 : parent.width - width
            y: section.stacked ? 26 : 3
            width: section.stacked ? parent.width : Math.ceil(implicitWidth)
            text: Words.text("Real moments. No need to outdo yourself.")
            color: Theme.muted
            wrapMode: Text.Wrap
        }
    }
    Item {
        width: 1
        height: 12
    }
    Grid {
        width: parent.width
        columns: section.columns
        spacing: 16

        Repeater {
            model: section.model.bests

            BestCard {
                width: Math.floor((section.width - 16 * (section.columns - 1)) / section.columns)
            }
        }
    }
}
