import QtQuick
import Varnet

Label {
    line: Theme.titleLine
    nudge: Theme.titleNudge
    font: Theme.title
}
