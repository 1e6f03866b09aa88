import QtQuick
import Varnet

// A toned square with an icon or a letter, in sizes 22, 28, 32 and 40.
Rectangle {
    id: tile

    property int side: 32
    property color tone: Theme.faint
    property string letter: ""
    property string iconName: ""

    implicitWidth: side
    implicitHeight: side
    radius: side >= 40 ? 10 : side >= 32 ? 8 : 6
    color: Theme.tile(tone)
    border.color: Theme.tileLine(tone)
    border.width: 1

    Icon {
        anchors.centerIn: parent
        size: tile.side >= 40 ? 20 : tile.side >= 32 ? 16 : 14
        name: tile.iconName
        color: Theme.tileInk(tile.tone)
    }
    Text {
        anchors.fill: parent
        visible: tile.iconName.length === 0
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
        text: tile.letter
        font.family: Theme.strong.family
        font.weight: Font.Bold
        font.pixelSize: tile.side >= 40 ? 17 : tile.side >= 32 ? 14 : 12
        font.hintingPreference: Font.PreferNoHinting
        color: Theme.tileInk(tile.tone)
    }
}
