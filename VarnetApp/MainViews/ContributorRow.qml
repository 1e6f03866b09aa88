import QtQuick
import QtQuick.Templates as T
import Varnet

// One of the groups that use the most CPU; pressing it opens its details.
T.AbstractButton {
    id: row

    required property string name
    required property string subtitle
    required property string kind
    required property color tone
    required property string figure
    required property double fraction
    property int barWidth: 96
    property string preview: ""

    readonly property bool isProject: kind === "project"
    readonly property int tileKind: kind === "application" ? Theme.Application
                                  : isProject ? Theme.Project : Theme.Other

    implicitHeight: 28
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        Tile {
            x: 8
            y: 3
            side: 22
            tone: Theme.tileTone(row.tileKind, row.name, Theme.dark)
            iconName: row.isProject ? "projects" : row.kind === "application" ? "" : "cpu"
            letter: row.name.charAt(0).toUpperCase()
        }
        StrongText {
            id: words
            x: 40
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), bar.x - 12 - x)
            text: row.name
            font: Theme.bodyMedium
        }
        CaptionText {
            id: about
            x: words.x + words.width + 8
            y: words.y + 3
            width: Math.max(0, bar.x - 12 - x)
            visible: width >= 24
            text: row.subtitle
        }
        ValueBar {
            id: bar
            x: parent.width - 72 - width
            anchors.verticalCenter: parent.verticalCenter
            width: row.barWidth
            thickness: 4
            fraction: row.fraction
            tone: row.tone
        }
        Figure {
            x: parent.width - 8 - width
            anchors.verticalCenter: parent.verticalCenter
            width: 56
            alignment: Figure.Right
            text: row.figure
            color: Theme.text
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.down ? Theme.press : row.hovered || row.preview === "hover" ? Theme.hover : "transparent"

        Behavior on color {
            enabled: !row.down
            ColorAnimation { duration: Theme.hoverDuration }
        }
        FocusRing { shown: row.visualFocus; inside: true }
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.ListItem
    Accessible.name: row.name + " " + row.figure
    Accessible.description: row.subtitle
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
