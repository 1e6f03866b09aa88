import QtQuick
import Varnet

// How full the disk is: its name, both figures, and a bar.
Item {
    id: line

    required property WholeDiskModel model

    implicitHeight: 35

    Accessible.role: Accessible.StaticText
    Accessible.name: Words.text(model.diskName) + ", " + Words.text("Used") + " " + model.used + ", "
                     + Words.text("Free") + " " + model.free

    Label {
        y: 4
        width: Math.max(0, figures.x - 16)
        text: line.model.diskName
        font: Theme.strong
        Accessible.ignored: true
    }
    Row {
        id: figures
        y: 4
        anchors.right: about.left
        anchors.rightMargin: 8
        spacing: 6

        component Key: Item {
            id: key

            required property string words
            required property string figure
            required property color tone
            required property color edge

            width: 14 + Math.ceil(name.implicitWidth) + 6 + number.implicitWidth
            height: 19

            Rectangle {
                y: 6
                width: 8
                height: 8
                radius: 2
                color: key.tone
                border.color: key.edge
                border.width: 1
            }
            Label {
                id: name
                x: 14
                text: key.words
                color: Theme.muted
                Accessible.ignored: true
            }
            Figure {
                id: number
                anchors.right: parent.right
                font: Theme.strong
                color: Theme.text
                text: key.figure
            }
        }
        Key {
            words: Words.text("Used")
            figure: line.model.used
            tone: Theme.emberFill
            edge: Theme.emberFill
        }
        Item {
            width: 4
            height: 1
        }
        Key {
            words: Words.text("Free")
            figure: line.model.free
            tone: Theme.track
            edge: Theme.faint
        }
    }
    IconButton {
        id: about
        objectName: "aboutCapacity"
        anchors.right: parent.right
        anchors.rightMargin: -6
        y: -1
        iconName: "info"
        iconSize: 16
        side: 24
        label: Words.text("About used and free")
        onClicked: explanation.toggleAt(about, 30)
    }
    ValueBar {
        y: 27
        width: parent.width
        thickness: 8
        fraction: line.model.usedShare
        tone: Theme.emberFill
    }
    InfoPanel {
        id: explanation
        title: Words.text("Used and free")

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.muted
            text: Words.text("Used is the space taken up on your startup disk. Free is space available now. macOS supplies both numbers.")
        }
    }
}
