import QtQuick
import QtQuick.Templates as T
import Varnet

// An application, a project or a process in a list. The row opens its details; it has a tick box and a stop
// button of its own, which the keyboard reaches from the row that has the focus.
T.ItemDelegate {
    id: row

    required property string title
    required property string subtitle
    // The column that the list is sorted by, and the other one; "—" when unknown.
    required property string primary
    required property string secondary
    required property double fraction
    property color barTone: Theme.emberFill
    property color tileTone: Theme.faint
    property string tileLetter: ""
    property string tileIcon: ""
    property string ports: ""
    property bool ticked: false
    property bool open: false
    property bool tickable: true
    property bool stoppable: true
    required property string tickLabel
    required property string stopLabel
    property string stopHelp: stopLabel
    property string stopReason: ""
    property string preview: ""

    signal opened
    signal tickWanted(bool ticked)
    signal stopRequested

    implicitWidth: 456
    implicitHeight: 52
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    onClicked: row.opened()

    contentItem: Item {
        Tick {
            x: 5
            anchors.verticalCenter: parent.verticalCenter
            label: row.tickLabel
            ticked: row.ticked
            enabled: row.tickable
            onWanted: (ticked) => row.tickWanted(ticked)
        }
        Tile {
            x: 40
            anchors.verticalCenter: parent.verticalCenter
            tone: row.tileTone
            letter: row.tileLetter
            iconName: row.tileIcon
        }
        StrongText {
            id: name
            x: 84
            y: 9
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), figure.x - x - 8
                                        - (pill.visible ? pill.width + 6 : 0)))
            text: row.title
        }
        Pill {
            id: pill
            x: name.x + name.width + 6
            y: 10
            visible: row.ports.length > 0
            small: true
            kind: Pill.Port
            text: row.ports
        }
        CaptionText {
            x: 84
            y: 28
            width: Math.max(0, figure.x - x - 8)
            text: row.subtitle
        }
        Figure {
            id: figure
            x: parent.width - 116 - width
            y: 13
            width: Math.max(64, implicitWidth)
            alignment: Figure.Right
            text: row.primary
            font: Theme.strong
            color: Theme.text
        }
        ValueBar {
            x: parent.width - 116 - 48
            y: 35
            width: 48
            fraction: row.fraction
            tone: row.barTone
        }
        Figure {
            x: parent.width - 36 - width
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(80, implicitWidth)
            alignment: Figure.Right
            text: row.secondary
            font: Theme.body
            color: Theme.muted
        }
        IconButton {
            x: parent.width - 4 - width
            anchors.verticalCenter: parent.verticalCenter
            iconName: "stop"
            label: row.stopLabel
            help: row.stopHelp
            disabledReason: row.stopReason
            enabled: row.stoppable
            preview: row.preview === "hover" ? "hover" : ""
            onClicked: row.stopRequested()
        }
    }
    background: RowFrame {
        hovered: row.hovered || row.preview === "hover"
        pressed: row.down || row.preview === "pressed"
        ticked: row.ticked
        open: row.open
        focused: row.visualFocus || row.preview === "focus"
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    Keys.onSpacePressed: if (row.tickable) row.tickWanted(!row.ticked)

    Accessible.role: Accessible.ListItem
    Accessible.name: row.title + " " + row.primary
    Accessible.description: row.subtitle
    Accessible.selectable: true
    Accessible.selected: row.open
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
