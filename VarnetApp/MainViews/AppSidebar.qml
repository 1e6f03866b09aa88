import QtQuick
import Varnet

Item {
    required property bool rail
}
