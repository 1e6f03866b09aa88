import QtQuick
import Varnet

// The four readings, side by side in every window.
Item {
    id: cards

    required property OverviewModel model

    readonly property int gap: width < 640 ? 12 : 16

    implicitHeight: 80

    Repeater {
        id: repeater
        model: cards.model.metrics

        MetricCard {
            id: card

            required property int index
            required property string name
            required property string help
            required property string about
            required property var model

            readonly property int start: Math.round(index * (cards.width + cards.gap) / 4)

            objectName: name
            x: start
            width: Math.round((index + 1) * (cards.width + cards.gap) / 4) - cards.gap - start
            iconName: model.icon
            tone: Theme[model.tone]
            label: Words.text(model.label)
            figure: Words.text(model.figure)
            note: Words.text(model.note)
            hasBar: model.hasBar
            fraction: model.fraction
            infoLabel: Words.text(help)
            onInfoRequested: panel.tell(card)
            onClicked: name === "fans" ? panel.tell(card) : cards.model.openMetric(name)
        }
    }
    InfoPanel {
        id: panel

        property string about: ""

        function tell(card: Item): void {
            title = card.label;
            about = card.about;
            toggleAt(card, 34);
        }

        title: ""

        Label {
            width: parent.width
            text: Words.text(panel.about)
            color: Theme.muted
            wrapMode: Text.Wrap
        }
    }
}
