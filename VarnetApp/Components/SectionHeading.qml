import QtQuick
import Varnet

// The head of a card: its title, and at the right whatever belongs to the whole of it.
Item {
    id: heading

    required property string title
    readonly property int titleWidth: Math.ceil(words.implicitWidth)
    default property alias trailing: area.data

    implicitWidth: words.implicitWidth + (area.width > 0 ? area.width + 8 : 0)
    implicitHeight: 24

    TitleText {
        id: words
        width: Math.max(0, Math.min(Math.ceil(implicitWidth), heading.width - (area.width > 0 ? area.width + 8 : 0)))
        text: heading.title
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Row {
        id: area
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
