import QtQuick
import QtQuick.Templates as T
import Varnet

// One reading: what it is, its figure, a line about it and a bar.
T.AbstractButton {
    id: card

    required property string iconName
    required property string label
    required property string figure
    property string note: ""
    property color tone: Theme.memory
    property bool hasBar: true
    property double fraction: 0
    // The words behind the information mark; without them there is none.
    property string infoLabel: ""
    property string preview: ""

    // Where it is narrow the words move closer together before they are cut.
    readonly property bool tight: width < 152

    signal infoRequested

    implicitWidth: 184
    implicitHeight: 80
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        Icon {
            x: card.tight ? 10 : 14
            y: 12
            name: card.iconName
            color: card.tone
        }
        CaptionText {
            x: card.tight ? 30 : 36
            y: 12
            width: Math.max(0, parent.width - x - (info.visible ? 27 : 14))
            text: card.label
        }
        Figure {
            x: 14
            y: 28
            width: Math.max(0, parent.width - 28)
            text: card.figure
            font: Theme.title
            color: Theme.text
        }
        CaptionText {
            x: 14
            y: 52
            width: Math.max(0, parent.width - 28)
            text: card.note
        }
        ValueBar {
            x: 14
            y: 71
            width: Math.max(0, parent.width - 28)
            visible: card.hasBar
            fraction: card.fraction
            tone: card.tone
        }
        IconButton {
            id: info
            anchors.right: parent.right
            anchors.rightMargin: 5
            y: 5
            visible: card.infoLabel.length > 0
            iconName: "info"
            iconSize: 14
            side: 24
            label: card.infoLabel
            tone: Theme.faint
            onClicked: card.infoRequested()
        }
    }
    background: Card {
        hovered: card.hovered || card.down || card.preview === "hover"

        FocusRing {
            cornerRadius: Theme.radiusCard
            shown: card.visualFocus || card.preview === "focus"
        }
    }

    Keys.onReturnPressed: card.clicked()
    Keys.onEnterPressed: card.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: card.label + " " + card.figure
    Accessible.description: card.note
    Accessible.onPressAction: if (card.enabled) card.clicked()
}
