import QtQuick
import Varnet

// What a button means, with its mark.
Item {
    id: explanation

    required property string text
    required property string iconName
    required property color iconTone

    implicitHeight: words.height

    Icon {
        y: 2
        name: explanation.iconName
        color: explanation.iconTone
    }
    Label {
        id: words
        x: 26
        width: parent.width - x
        text: explanation.text
        wrapMode: Text.Wrap
    }
}
