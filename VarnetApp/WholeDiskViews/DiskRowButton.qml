import QtQuick
import QtQuick.Templates as T
import Varnet

// Something in a folder: what it is called, how large it is, and a bar against the largest.
T.AbstractButton {
    id: row

    required property string title
    required property string subtitle
    required property bool partial
    required property string figure
    required property double share
    required property color tone
    required property string iconName
    // Its tile is below the pointer.
    property bool lit: false
    property bool reachable: true

    implicitHeight: 49
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    activeFocusOnTab: reachable
    text: title

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: 4
            anchors.rightMargin: 4
            radius: Theme.radius
            color: row.down ? Theme.press : row.lit || row.hovered ? Theme.hover : "transparent"

            FocusRing {
                shown: row.visualFocus
                inside: true
            }
        }
    }
    contentItem: Item {
        Tile {
            x: 12
            y: 11
            side: 28
            tone: row.tone
            iconName: row.iconName
        }
        Label {
            x: 50
            y: 4
            width: Math.max(0, number.x - 12 - x)
            text: row.title
            font: Theme.strong
            elide: Text.ElideMiddle
        }
        Figure {
            id: number
            x: parent.width - width - 16
            y: 4
            color: Theme.text
            text: row.figure
        }
        CaptionText {
            x: 50
            y: 22
            width: Math.max(0, parent.width - x - 16)
            text: row.subtitle
            color: row.partial ? Theme.warn : Theme.muted
        }
        ValueBar {
            x: 50
            y: 41
            width: Math.max(0, parent.width - x - 16)
            fraction: row.share
            tone: row.tone
        }
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.ListItem
    Accessible.name: row.title + " " + row.figure
    Accessible.description: row.subtitle
    Accessible.onPressAction: row.clicked()
}
