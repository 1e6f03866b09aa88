import QtQuick
import Varnet

// Six small readings in two lines.
Item {
    id: cards

    required property BatteryModel model
    required property int gap

    readonly property bool tight: width < 400

    Repeater {
        model: cards.model.figures

        Card {
            id: card

            required property int index
            required property string icon
            required property string tone
            required property string label
            required property string figure
            required property string about

            readonly property int place: index % 3
            readonly property int start: Math.round(place * (cards.width + cards.gap) / 3)

            x: start
            y: index < 3 ? 0 : cards.height - height
            width: Math.round((place + 1) * (cards.width + cards.gap) / 3) - cards.gap - start
            height: Math.floor((cards.height - cards.gap) / 2)

            Accessible.role: Accessible.StaticText
            Accessible.name: Words.text(label) + " " + value.text
            Accessible.description: Words.text(about)

            Icon {
                x: cards.tight ? 10 : 12
                y: 11
                name: card.icon
                color: Theme[card.tone] ?? Theme.muted
            }
            CaptionText {
                x: cards.tight ? 31 : 34
                y: 12
                width: Math.max(0, parent.width - x - 8)
                text: Words.text(card.label)
            }
            Figure {
                id: value
                x: cards.tight ? 10 : 12
                y: card.height - 36
                width: Math.max(0, parent.width - x - 6)
                text: Words.text(card.figure)
                font: Theme.title
                color: Theme.text
            }
            HoverHandler { id: pointer }
            HoverTip {
                text: Words.text(card.about)
                wanted: pointer.hovered
            }
        }
    }
}
