import QtQuick
import Varnet

// How full it is, how long that lasts, and the power that flows.
Card {
    id: card

    required property BatteryModel model
    property bool compact: false

    readonly property int side: compact ? 96 : 112
    readonly property int inset: compact ? 14 : 20

    RingItem {
        id: ring
        x: card.inset
        y: Math.round((card.height - height) / 2)
        width: card.side
        height: card.side
        stroke: card.compact ? 8 : 9
        value: card.model.chargeShare
        color: Theme[card.model.chargeTone]
        trackColor: Theme.track

        Accessible.role: Accessible.Graphic
        Accessible.name: Words.text("Charge") + " " + figure.text
    }
    Item {
        id: middle

        anchors.centerIn: ring
        width: figure.implicitWidth
        height: figure.implicitHeight

        Figure {
            id: figure
            text: Words.text(card.model.charge)
            font: card.compact ? Theme.title : Theme.display
            color: Theme.text
        }
    }
    // On the ring's foot, in a gap of its own, while it fills.
    Icon {
        anchors.horizontalCenter: ring.horizontalCenter
        y: ring.y + ring.height - (card.compact ? 28 : 32)
        visible: card.model.charging
        size: 14
        name: "bolt"
        color: Theme.good
    }

    component Reading: Item {
        id: reading

        required property string label
        required property string figure

        x: card.inset + card.side + (card.compact ? 14 : 20)
        width: Math.max(0, card.width - x - 8)
        height: 40
        Accessible.role: Accessible.StaticText
        Accessible.name: label + " " + figure

        CaptionText {
            width: parent.width
            text: reading.label
        }
        Figure {
            y: 16
            width: parent.width
            text: reading.figure
            font: Theme.title
            color: Theme.text
        }
    }
    Reading {
        y: 26
        label: Words.text(card.model.timeLabel)
        figure: Words.text(card.model.time)
    }
    Reading {
        y: 77
        label: Words.text("Power")
        figure: Words.text(card.model.power)
    }
}
