import QtQuick
import Varnet

// One figure of a week.
Card {
    id: card

    required property string name
    required property string label
    required property string icon
    required property string tone
    required property string figure
    required property string note

    objectName: "week-" + name
    implicitHeight: 104

    Icon {
        x: 14
        y: 14
        name: card.icon
        color: Theme[card.tone]
    }
    CaptionText {
        x: 36
        y: 14
        width: parent.width - x - 12
        text: Words.text(card.label)
    }
    DisplayText {
        x: 14
        y: 36
        width: parent.width - 28
        text: card.figure
    }
    CaptionText {
        x: 14
        y: 76
        width: parent.width - 28
        text: Words.text(card.note)
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: Words.text(label) + " " + figure
    Accessible.description: Words.text(note)
}
