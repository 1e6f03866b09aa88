import QtQuick
import Varnet

Label {
    line: Theme.displayLine
    nudge: Theme.displayNudge
    font: Theme.display
}
