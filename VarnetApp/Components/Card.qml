import QtQuick
import Varnet

Rectangle {
    color: Theme.dark ? "#1E1814" : "#FFFFFF"
    radius: 12
}
