import QtQuick
import QtQuick.Templates as T
import Varnet

// What the user did, newest first. A long list scrolls by itself.
ListView {
    id: list

    readonly property int tallest: 288

    implicitHeight: Math.min(tallest, contentHeight + 12)
    interactive: contentHeight > height
    clip: true
    activeFocusOnTab: interactive
    boundsBehavior: Flickable.StopAtBounds
    bottomMargin: 12
    T.ScrollBar.vertical: ScrollThumb {}
    Keys.onDownPressed: contentY = Math.min(Math.max(0, contentHeight + bottomMargin - height), contentY + 52)
    Keys.onUpPressed: contentY = Math.max(0, contentY - 52)

    delegate: Item {
        id: row

        required property string title
        required property string detail
        required property string moment

        width: list.width
        height: words.implicitHeight + 14

        Column {
            id: words
            x: 16
            y: 7
            width: parent.width - 32 - when.width - 12

            Label {
                width: parent.width
                text: Words.text(row.title)
                wrapMode: Text.Wrap
            }
            CaptionText {
                width: parent.width
                text: Words.text(row.detail)
                wrapMode: Text.Wrap
            }
        }
        CaptionText {
            id: when
            x: parent.width - 16 - width
            y: 9
            width: Math.ceil(implicitWidth)
            text: row.moment
        }

        Accessible.role: Accessible.ListItem
        Accessible.name: Words.text(row.title) + " " + row.moment
        Accessible.description: Words.text(row.detail)
    }

    FocusRing {
        parent: list
        shown: list.activeFocus
        inside: true
    }

    Accessible.role: Accessible.List
    Accessible.name: Words.text("Recent actions")
}
