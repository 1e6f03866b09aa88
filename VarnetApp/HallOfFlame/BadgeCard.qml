import QtQuick
import QtQuick.Templates as T
import Varnet

// One badge: its medal and name, then its tier or how far it has come.
T.AbstractButton {
    id: card

    required property string badge
    required property string title
    required property string iconName
    required property string tier
    required property string tone
    required property string ink
    required property bool earned
    required property double progress
    required property string words
    required property string finePrint

    // Its fine print is open.
    property bool told: false

    signal tellRequested
    signal untellRequested

    objectName: badge
    hoverEnabled: true
    text: Words.text(title)

    onHoveredChanged: {
        if (hovered)
            return patience.start();
        patience.stop();
        if (!visualFocus)
            untellRequested();
    }
    onVisualFocusChanged: visualFocus ? tellRequested() : untellRequested()

    Timer {
        id: patience
        interval: 300
        onTriggered: card.tellRequested()
    }

    contentItem: Item {
        Medal {
            x: Math.round((parent.width - width) / 2)
            y: 14
            icon: card.iconName
            tone: card.earned ? Theme[card.tone] : Theme.faint
            earned: card.earned
        }
        StrongText {
            x: 8
            y: 78
            width: parent.width - 16
            horizontalAlignment: Text.AlignHCenter
            text: card.text
            color: card.earned ? Theme.text : Theme.muted
        }
        CaptionText {
            x: 8
            y: 99
            width: parent.width - 16
            visible: card.earned
            horizontalAlignment: Text.AlignHCenter
            text: Words.text(card.tier)
            color: Theme[card.ink]
        }
        ValueBar {
            x: Math.round((parent.width - width) / 2)
            y: 106
            width: 100
            height: 4
            visible: !card.earned
            thickness: 4
            fraction: card.progress
            tone: Theme[card.tone]
        }
    }
    background: Card {
        hovered: card.hovered || card.down || card.told

        FocusRing {
            cornerRadius: Theme.radiusCard
            shown: card.visualFocus
        }
    }

    Keys.onReturnPressed: card.clicked()
    Keys.onEnterPressed: card.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: text + " " + Words.text(tier) + " "
                     + (earned ? Words.text("Earned") : Math.floor(progress * 100) + "%")
    Accessible.description: Words.text(words) + (finePrint.length > 0 ? " " + Words.text(finePrint) : "")
    Accessible.onPressAction: card.clicked()
}
