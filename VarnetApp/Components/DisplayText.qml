import QtQuick
import Varnet

Label {
    line: Theme.displayLine
    nudge: 0
    font: Theme.display
}
