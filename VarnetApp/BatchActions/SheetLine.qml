import QtQuick
import Varnet

// One process or application of a sheet, and what became of it. A detail takes a line of its own.
Item {
    id: line

    required property string name
    required property string note
    required property string figure
    required property string figure2
    required property string outcome
    required property string detail
    // None, good, muted, warn, bad.
    required property int tone
    required property string iconName
    required property string tileTone
    required property string tileLetter
    required property bool last
    required property bool tiles
    required property int rowHeight

    readonly property list<color> inks: [Theme.muted, Theme.good, Theme.muted, Theme.warn, Theme.bad]
    readonly property list<string> marks: [iconName, "check", "check", "warning", "close"]
    readonly property color ink: inks[tone]
    readonly property int wordsStart: 15 + (tiles ? 34 : 25)

    implicitHeight: rowHeight + (detail.length > 0 ? more.height + 6 : 0)

    Icon {
        x: 15
        y: Math.round((line.rowHeight - 16) / 2)
        visible: !line.tiles
        name: line.marks[line.tone]
        color: line.ink
    }
    Tile {
        x: 15
        y: Math.round((line.rowHeight - 24) / 2)
        visible: line.tiles
        side: 24
        tone: line.tileTone.length > 0 ? Theme[line.tileTone]
                                       : Theme.tileTone(Theme.Application, line.name, Theme.dark)
        letter: line.tileLetter
        iconName: line.iconName
    }
    StrongText {
        id: words
        x: line.wordsStart
        y: Math.round((line.rowHeight - height) / 2)
        width: Math.max(0, Math.min(Math.ceil(implicitWidth), right.x - x - 8))
        text: line.name
    }
    CaptionText {
        id: about
        // In columns where names are short.
        x: line.tiles ? words.x + words.width + 8 : Math.max(104, words.x + words.width + 12)
        y: Math.round((line.rowHeight - height) / 2)
        width: Math.max(0, Math.min(Math.ceil(implicitWidth), right.x - x - 8))
        text: line.note
    }
    Row {
        id: right
        x: line.width - 15 - width
        height: line.rowHeight
        spacing: line.outcome.length > 0 ? 8 : 16

        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.figure.length > 0 && line.figure2.length === 0
            text: line.figure
        }
        Figure {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.figure2.length > 0
            width: Math.max(56, implicitWidth)
            alignment: Figure.Right
            text: line.figure
            font: Theme.body
            color: Theme.text
        }
        Figure {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.figure2.length > 0
            width: Math.max(60, implicitWidth)
            alignment: Figure.Right
            text: line.figure2
            font: Theme.body
            color: Theme.muted
        }
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.tiles && line.outcome.length > 0
            name: line.marks[line.tone]
            color: line.ink
        }
        StrongText {
            anchors.verticalCenter: parent.verticalCenter
            visible: line.outcome.length > 0
            text: line.outcome
            color: line.ink
        }
    }
    CaptionText {
        id: more
        x: line.wordsStart
        y: line.rowHeight - 6
        width: line.width - x - 15
        visible: line.detail.length > 0
        text: line.detail
        wrapMode: Text.Wrap
    }
    Separator {
        x: 14
        y: parent.height - 1
        width: parent.width - 28
        visible: !line.last
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: [name, outcome.length > 0 ? outcome : figure].join(" ")
    Accessible.description: [note, detail].filter(text => text.length > 0).join(". ")
}
