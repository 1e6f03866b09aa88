import QtQuick
import Varnet

Label {
    font: Theme.strong
}
