import QtQuick
import Varnet

Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    color: Theme.hairline
}
