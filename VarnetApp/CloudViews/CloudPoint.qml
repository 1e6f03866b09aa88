import QtQuick
import Varnet

// One thing to know, behind its mark.
Item {
    id: point

    required property string iconName
    required property color tone
    required property string text

    implicitHeight: words.implicitHeight

    Icon {
        y: 2
        name: point.iconName
        color: point.tone
    }
    Label {
        id: words
        x: 28
        width: parent.width - x
        text: point.text
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
