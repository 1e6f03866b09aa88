import QtQuick
import Varnet

Label {
    line: Theme.captionLine
    nudge: 0
    font: Theme.caption
    color: Theme.muted
}
