import QtQuick
import Varnet

Label {
    line: Theme.captionLine
    nudge: Theme.captionNudge
    font: Theme.caption
    color: Theme.muted
}
