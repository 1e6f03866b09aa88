import QtQuick
import Varnet

// Words in one of the type styles. Every line is `line` high, alone or in a paragraph.
Text {
    property int line: Theme.bodyLine
    // What centres the letters in their line.
    property double nudge: Theme.bodyNudge

    font: Theme.body
    color: Theme.text
    textFormat: Text.PlainText
    elide: Text.ElideRight
    lineHeightMode: Text.FixedHeight
    lineHeight: line
    topPadding: nudge
    bottomPadding: -nudge
}
