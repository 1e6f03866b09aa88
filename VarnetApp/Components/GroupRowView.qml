import QtQuick
import QtQuick.Templates as T
import Varnet

// An application, a project, a process or a server in a list. The row opens its details; it has a tick box and
// a stop button of its own, which the keyboard reaches from the row that has the focus.
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
    // Pills, each left out when it is empty: a state to warn of, a worktree, agents one a line.
    property string stateText: ""
    property string worktree: ""
    property string agents: ""
    // Where the pills go: at the right of the words, or below them in a line of their own.
    property bool pillsBelow: false
    // There is no room for them at all.
    property bool pillsHidden: false
    property bool ticked: false
    property bool open: false
    property bool tickable: true
    property bool stoppable: true
    required property string tickLabel
    required property string stopLabel
    property string stopHelp: stopLabel
    property string stopReason: ""
    property string openLabel: subtitle
    // The row is where the keyboard enters the list; its parts are reached from it.
    property bool reachable: true
    property string preview: ""
    // The two lines of words.
    property int band: 52

    readonly property bool hasPills: !pillsHidden && stateText.length + worktree.length + agents.length > 0
    readonly property bool pillsAside: hasPills && !pillsBelow

    // The keyboard has come to it or to one of its parts.
    signal takenInHand
    signal opened
    signal tickWanted(bool ticked)
    signal stopRequested

    implicitWidth: 456
    implicitHeight: band + (hasPills && pillsBelow ? 20 : 0)
    hoverEnabled: true
    focusPolicy: reachable || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    onClicked: row.opened()
    onActiveFocusChanged: if (activeFocus) row.takenInHand()

    contentItem: Item {
        id: content

        readonly property int middle: Math.round(row.band / 2)
        // Where the words end.
        readonly property int wordsEnd: (row.pillsAside ? pills.x : figure.x) - 8

        Tick {
            x: 5
            y: Math.round(content.middle - height / 2)
            label: row.tickLabel
            help: row.tickLabel
            disabledReason: row.stopReason
            ticked: row.ticked
            enabled: row.tickable
            focusPolicy: row.reachable || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
            onActiveFocusChanged: if (activeFocus) row.takenInHand()
            onWanted: (ticked) => row.tickWanted(ticked)
        }
        Tile {
            x: 40
            y: Math.round(content.middle - height / 2)
            tone: row.tileTone
            letter: row.tileLetter
            iconName: row.tileIcon
        }
        StrongText {
            id: name
            x: 84
            y: content.middle - 17
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), content.wordsEnd - x
                                        - (port.visible ? port.width + 6 : 0)))
            text: row.title
        }
        Pill {
            id: port
            x: name.x + name.width + 6
            y: content.middle - 16
            visible: row.ports.length > 0
            small: true
            kind: Pill.Port
            text: row.ports
        }
        CaptionText {
            x: 84
            y: content.middle + 2
            width: Math.max(0, content.wordsEnd - x)
            text: row.subtitle
        }
        Row {
            id: pills
            x: row.pillsBelow ? 84 : figure.x - 24 - width
            y: row.pillsBelow ? row.band - 8 : Math.round(content.middle - height / 2)
            height: 20
            spacing: 4
            visible: row.hasPills

            Pill {
                visible: row.stateText.length > 0
                kind: Pill.Warn
                text: row.stateText
            }
            Pill {
                visible: row.worktree.length > 0
                kind: Pill.Worktree
                text: row.worktree
            }
            Repeater {
                model: row.agents.length > 0 ? row.agents.split("\n") : []

                Pill {
                    required property string modelData
                    kind: Pill.Agent
                    text: modelData
                }
            }
        }
        Figure {
            id: figure
            x: parent.width - 116 - width
            y: content.middle - 13
            width: Math.max(64, implicitWidth)
            alignment: Figure.Right
            text: row.primary
            font: Theme.strong
            color: Theme.text
        }
        ValueBar {
            x: parent.width - 116 - 48
            y: content.middle + 9
            width: 48
            fraction: row.fraction
            tone: row.barTone
        }
        Figure {
            x: parent.width - 36 - width
            y: Math.round(content.middle - height / 2)
            width: Math.max(80, implicitWidth)
            alignment: Figure.Right
            text: row.secondary
            font: Theme.body
            color: Theme.muted
        }
        IconButton {
            x: parent.width - 4 - width
            y: Math.round(content.middle - height / 2)
            iconName: "stop"
            label: row.stopLabel
            help: row.stopHelp
            disabledReason: row.stopReason
            enabled: row.stoppable
            focusPolicy: row.reachable || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
            preview: row.preview === "hover" ? "hover" : ""
            onActiveFocusChanged: if (activeFocus) row.takenInHand()
            onClicked: row.stopRequested()
        }
    }
    background: RowFrame {
        hovered: row.hovered || row.preview === "hover"
        pressed: row.down || row.preview === "pressed"
        ticked: row.ticked
        open: row.open
        band: row.band
        focused: row.visualFocus || row.preview === "focus"
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    Keys.onSpacePressed: if (row.tickable) row.tickWanted(!row.ticked)

    Accessible.role: Accessible.ListItem
    Accessible.name: row.title + " " + row.primary
    Accessible.description: row.openLabel
    Accessible.selectable: true
    Accessible.selected: row.open
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
