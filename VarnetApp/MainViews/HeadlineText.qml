import QtQuick
import Varnet

// A headline in one line or two, in the display size as long as that fits.
Label {
    id: headline

    required property string words
    property bool compact: false

    readonly property HeadlineLayout layout: HeadlineLayout {
        words: headline.words
        width: headline.width
        compact: headline.compact
    }

    text: layout.text
    font: layout.isTitle ? Theme.title : Theme.display
    line: layout.isTitle ? Theme.titleLine : Theme.displayLine
    nudge: layout.isTitle ? Theme.titleNudge : Theme.displayNudge
    wrapMode: Text.Wrap
    Accessible.role: Accessible.Heading
    Accessible.name: words
}
