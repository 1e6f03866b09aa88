import QtQuick
import Varnet

Card {
    property alias caption: words.text

    width: 488

    CaptionText {
        id: words
        x: 16
        y: 12
    }
}
