import QtQuick
import Varnet

// What is inspected, and the way out.
Item {
    id: head

    required property DetailModel model
    required property bool covering

    signal closed

    function takeFocus(): void {
        (covering ? back : close).forceActiveFocus(Qt.TabFocusReason);
    }

    readonly property int start: covering ? 40 : 0

    implicitHeight: Math.max(40, 24 + about.height)

    IconButton {
        id: back
        objectName: "detailBack"
        x: -4
        y: 6
        visible: head.covering
        iconName: "left"
        label: Words.text("Close detail")
        help: Words.text("Close detail (Escape)")
        onClicked: head.closed()
    }
    Tile {
        x: head.start
        side: 40
        tone: head.model.tileTone.length > 0 ? Theme[head.model.tileTone]
                                             : Theme.tileTone(Theme.Application, head.model.title, Theme.dark)
        letter: head.model.tileLetter
        iconName: head.model.tileIcon
    }
    TitleText {
        x: head.start + 52
        y: -2
        width: Math.max(0, close.x - x - 8)
        text: head.model.title
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    CaptionText {
        id: about
        x: head.start + 52
        y: 24
        width: Math.max(0, close.x - x - 8)
        text: Words.text(head.model.subtitle)
        wrapMode: Text.Wrap
    }
    IconButton {
        id: close
        objectName: "detailClose"
        x: head.width - width
        y: -2
        visible: !head.covering
        iconName: "close"
        label: Words.text("Close detail")
        help: Words.text("Close detail (Escape)")
        onClicked: head.closed()
    }
}
