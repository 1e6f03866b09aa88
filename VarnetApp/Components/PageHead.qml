import QtQuick
import Varnet

// The head of a page: what it is in big words, a line about it, and at the right a note.
Item {
    id: head

    required property string headline
    required property string line
    property string note: ""

    implicitHeight: words.height + Math.max(about.height, aside.height) + 3

    HeadlineText {
        id: words
        width: parent.width
        words: head.headline
    }
    Label {
        id: about
        y: words.height + 2
        width: Math.max(0, aside.x - 16)
        text: head.line
        color: Theme.muted
        wrapMode: Text.Wrap
    }
    CaptionText {
        id: aside
        x: parent.width - width
        y: about.y + 2
        width: Math.min(Math.ceil(implicitWidth), parent.width * 0.5)
        visible: text.length > 0
        text: head.note
        color: Theme.muted
    }
}
