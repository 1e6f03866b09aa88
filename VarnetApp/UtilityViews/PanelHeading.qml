import QtQuick
import Varnet

// The head of a part of the panel, with a few words at its right end.
Item {
    id: heading

    required property string title
    property string note: ""

    implicitHeight: 27

    StrongText {
        width: Math.max(0, words.x - 8)
        y: 3
        text: heading.title
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    CaptionText {
        id: words
        x: parent.width - width
        y: 5
        width: Math.ceil(implicitWidth)
        text: heading.note
    }
}
