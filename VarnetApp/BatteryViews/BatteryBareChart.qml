import QtQuick
import Varnet

// The grid of a chart that has no line yet, and why.
Item {
    id: bare

    required property string words
    required property color ground

    Repeater {
        model: 3

        Separator {
            required property int index

            y: Math.round(bare.height * index / 2)
            width: bare.width
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: label.width + 16
        height: label.height
        color: bare.ground

        Label {
            id: label
            anchors.centerIn: parent
            width: Math.min(Math.ceil(implicitWidth), bare.width - 16)
            horizontalAlignment: Text.AlignHCenter
            text: bare.words
            color: Theme.muted
            wrapMode: Text.Wrap
        }
    }
}
