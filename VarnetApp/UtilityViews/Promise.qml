import QtQuick
import Varnet

// One thing that the program promises: a mark, a few strong words, and a line below them.
Item {
    id: promise

    required property string iconName
    required property string title
    property string note: ""

    implicitHeight: Math.max(48, words.implicitHeight + 24)

    Rectangle {
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 32
        height: 32
        radius: 16
        color: Theme.tint(Theme.good)

        Icon {
            anchors.centerIn: parent
            name: promise.iconName
            color: Theme.good
        }
    }
    Column {
        id: words
        x: 60
        width: Math.max(0, parent.width - x - 16)
        anchors.verticalCenter: parent.verticalCenter

        StrongText {
            width: parent.width
            text: promise.title
            wrapMode: Text.Wrap
        }
        Label {
            width: parent.width
            visible: promise.note.length > 0
            text: promise.note
            color: Theme.muted
            wrapMode: Text.Wrap
        }
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: note.length > 0 ? title + " " + note : title
}
