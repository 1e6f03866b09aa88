import QtQuick
import Varnet

// The running session or the last one, and what used the battery in it.
Card {
    id: card

    required property BatteryModel model

    readonly property bool ready: model.sessionNotice.length === 0
    readonly property int bar: Math.min(192, Math.round(width * 0.41))

    implicitHeight: 216

    SectionHeading {
        id: heading
        x: 16
        y: 12
        width: parent.width - 32
        title: Words.text(card.model.sessionTitle)

        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), heading.width - heading.titleWidth - 16))
            text: Words.text(card.model.sessionAbout)
        }
    }
    Column {
        y: 43
        width: parent.width
        visible: card.ready

        Repeater {
            model: card.model.apps

            Item {
                id: row

                required property string name
                required property string icon
                required property string letter
                required property string tone
                required property string figure
                required property double fraction
                required property string note
                required property string about

                width: card.width
                height: 32
                Accessible.role: Accessible.ListItem
                Accessible.name: name + " " + figure
                Accessible.description: Words.text(about)

                Tile {
                    x: 16
                    y: 5
                    side: 22
                    tone: row.tone.length > 0 ? Theme[row.tone]
                                              : Theme.tileTone(Theme.Application, row.name, Theme.dark)
                    iconName: row.icon
                    letter: row.letter
                }
                Label {
                    id: words
                    x: 48
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.max(0, Math.min(Math.ceil(implicitWidth), bar.x - 12 - x
                                                - (part.visible ? part.width + 8 : 0)))
                    text: row.name
                    font: Theme.bodyMedium
                }
                CaptionText {
                    id: part
                    x: words.x + words.width + 8
                    y: words.y + 3
                    visible: row.note.length > 0
                    text: Words.text(row.note)
                }
                ValueBar {
                    id: bar
                    x: parent.width - 80 - width
                    anchors.verticalCenter: parent.verticalCenter
                    width: card.bar
                    thickness: 6
                    fraction: row.fraction
                }
                Figure {
                    x: parent.width - 16 - width
                    anchors.verticalCenter: parent.verticalCenter
                    width: 56
                    alignment: Figure.Right
                    text: row.figure
                    color: Theme.text
                }
                HoverHandler { id: pointer }
                HoverTip {
                    text: Words.text(row.about)
                    wanted: pointer.hovered
                }
            }
        }
    }
    EmptyState {
        y: 66
        width: parent.width
        visible: !card.ready
        inCard: true
        iconName: "hourglass"
        title: Words.text(card.model.sessionNotice)
        note: Words.text(card.model.sessionNote)
    }
}
