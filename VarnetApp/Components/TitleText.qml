import QtQuick
import Varnet

Label {
    line: Theme.titleLine
    font: Theme.title
}
