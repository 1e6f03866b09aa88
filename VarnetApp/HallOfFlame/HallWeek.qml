import QtQuick
import Varnet

// What a week amounted to.
Column {
    id: section

    required property HallModel model

    readonly property int columns: width >= 720 ? 4 : 2
    readonly property bool stacked: title.titleWidth + 16 + controls.width > width

    signal shareRequested

    Item {
        width: parent.width
        height: section.stacked ? 24 + 8 + 32 : 32

        SectionHeading {
            id: title
            y: section.stacked ? 0 : 4
            width: Math.min(titleWidth, parent.width)
            title: Words.text(section.model.weekTitle)
        }
        Row {
            id: controls
            x: section.stacked ? 0 : parent.width - width
            y: section.stacked ? 32 : 0
            spacing: 8

            Segmented {
                objectName: "weekChoice"
                label: Words.text("Weekly measurements")
                options: [Words.text("This week"), Words.text("Last week")]
                currentIndex: section.model.week
                onChosen: (index) => section.model.week = index
            }
            Button {
                objectName: "shareWeek"
                iconName: "share"
                text: Words.text("Share weekly roast")
                help: Words.text("Preview and share your weekly roast")
                onClicked: section.shareRequested()
            }
        }
    }
    Item {
        width: 1
        height: 12
    }
    Item {
        width: parent.width
        height: Math.ceil(4 / section.columns) * 116 - 12

        Repeater {
            model: section.model.figures

            WeekCard {
                required property int index
                readonly property int column: index % section.columns
                readonly property int start: Math.round(column * (section.width + 16) / section.columns)

                x: start
                y: Math.floor(index / section.columns) * 116
                width: Math.round((column + 1) * (section.width + 16) / section.columns) - 16 - start
            }
        }
    }
    Item {
        width: 1
        height: 12
    }
    Card {
        id: appetite

        readonly property bool known: section.model.appetiteName.length > 0

        width: parent.width
        height: 56

        Tile {
            x: 13
            anchors.verticalCenter: parent.verticalCenter
            iconName: appetite.known ? "" : "flame"
            letter: section.model.appetiteLetter
            tone: appetite.known ? Theme.tileTone(Theme.Application, section.model.appetiteName, Theme.dark)
                                 : Theme.faint
        }
        CaptionText {
            x: 58
            y: 10
            width: parent.width - x - 16
            text: Words.text("Biggest app appetite")
        }
        StrongText {
            x: 58
            y: 26
            width: parent.width - x - share.width - 32
            text: appetite.known ? section.model.appetiteName : Words.text("No app readings yet")
            color: appetite.known ? Theme.text : Theme.muted
        }
        TitleText {
            id: share
            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            text: section.model.appetiteFigure
        }
        Accessible.role: Accessible.StaticText
        Accessible.name: Words.text("Biggest app appetite") + " "
                         + (appetite.known ? section.model.appetiteName + " " + section.model.appetiteFigure
                                           : Words.text("No app readings yet"))
    }
    Item {
        width: 1
        height: 10
    }
    CaptionText {
        width: parent.width
        text: Words.text(section.model.weekNote)
        wrapMode: Text.Wrap
    }
}
