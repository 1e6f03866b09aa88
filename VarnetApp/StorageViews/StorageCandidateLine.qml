import QtQuick
import Varnet

// A folder offered for review, with a tick where it can be chosen.
Item {
    id: line

    required property string name
    required property string note
    required property string figure
    required property color tone
    required property bool ticked
    required property bool last
    property bool tickable: false
    property bool locked: false

    readonly property int start: tickable ? 44 : 14

    signal wanted(bool ticked)

    implicitHeight: 48

    Tick {
        id: box
        objectName: "candidate " + line.name
        x: 9
        y: 10
        visible: line.tickable
        enabled: !line.locked
        label: line.name + " " + line.figure
        ticked: line.ticked
        onWanted: (ticked) => line.wanted(ticked)
    }
    Rectangle {
        x: line.start
        y: 11
        width: 8
        height: 8
        radius: 2
        color: line.tone
    }
    Label {
        x: line.start + 16
        y: 5
        width: Math.max(0, number.x - 12 - x)
        text: line.name
        font: Theme.strong
        color: line.ticked ? Theme.text : Theme.muted
        elide: Text.ElideMiddle
    }
    CaptionText {
        x: line.start + 16
        y: 25
        width: Math.max(0, number.x - 12 - x)
        text: line.note
    }
    Figure {
        id: number
        x: parent.width - width - 15
        y: 14
        alignment: Figure.Right
        text: line.figure
        font: Theme.body
        color: line.ticked ? Theme.text : Theme.muted
    }
    Separator {
        x: line.start
        y: parent.height - 1
        width: parent.width - x - 14
        visible: !line.last
    }
    TapHandler {
        enabled: line.tickable && !line.locked
        onTapped: line.wanted(!line.ticked)
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: line.name + " " + line.figure
    Accessible.description: line.note
}
