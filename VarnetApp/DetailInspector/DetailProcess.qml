import QtQuick
import Varnet

// A process in the tree: deeper ones stand further right, behind a line.
Item {
    id: process

    required property string name
    required property string pidText
    required property int depth
    required property string cpu
    required property string executable
    required property string workingDirectory

    readonly property int indent: 16 * depth

    implicitHeight: 58

    Repeater {
        model: process.depth

        Separator {
            required property int index
            x: 5 + 16 * index
            width: 1
            height: process.height
        }
    }
    Label {
        x: process.indent
        y: 5
        width: Math.max(0, pid.x - x - 8)
        text: process.name
        font: Theme.bodyMedium
    }
    CaptionText {
        id: pid
        x: parent.width - 52 - width
        y: 7
        text: process.pidText
    }
    Figure {
        x: parent.width - width
        y: 5
        width: Math.max(46, implicitWidth)
        alignment: Figure.Right
        text: process.cpu
        font: Theme.body
        color: Theme.text
    }
    CaptionText {
        x: process.indent
        y: 24
        width: parent.width - x
        elide: Text.ElideMiddle
        text: process.executable
    }
    CaptionText {
        x: process.indent
        y: 39
        width: parent.width - x
        elide: Text.ElideMiddle
        text: process.workingDirectory
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: [name, pidText, cpu].join(" ")
    Accessible.description: [executable, workingDirectory].join(". ")
}
