import QtQuick
import QtQuick.Templates as T
import Varnet

// A family of projects, or one folder of an unfolded one.
T.AbstractButton {
    id: row

    required property string title
    required property string subtitle
    required property string figure
    required property string review
    required property string about
    required property bool warns
    required property bool member
    required property bool foldable
    required property bool unfolded
    required property bool last
    required property list<double> shares
    property bool wide: false
    // Its tile is below the pointer.
    property bool lit: false
    property bool reachable: true

    readonly property int middle: 24
    readonly property int wordsEnd: wide ? bar.x - 24 : number.x - 8

    signal foldWanted(bool unfolded)

    implicitHeight: 48
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    activeFocusOnTab: reachable
    text: title

    background: Item {
        Rectangle {
            x: 4
            width: parent.width - 8
            height: parent.height
            radius: Theme.radius
            color: row.down ? Theme.press : row.lit || row.hovered ? Theme.hover : "transparent"

            FocusRing {
                shown: row.visualFocus
                inside: true
            }
        }
        Rectangle {
            x: 17
            width: 1
            height: parent.height - (row.last ? 8 : 0)
            visible: row.member
            color: Theme.hairline
        }
    }
    contentItem: Item {
        Icon {
            x: 9
            y: 18
            visible: row.foldable
            name: row.unfolded ? "down" : "right"
            color: row.hovered ? Theme.text : Theme.muted
        }
        Label {
            x: 31
            y: row.middle - 18
            width: Math.max(0, row.wordsEnd - x)
            text: row.title
            font: row.member ? Theme.bodyMedium : Theme.strong
            elide: Text.ElideMiddle
        }
        CaptionText {
            x: 31
            y: row.middle + 2
            width: Math.max(0, (row.wide ? row.wordsEnd : review.text.length > 0 ? review.x - 8 : parent.width - 16) - x)
            text: row.subtitle
            color: row.warns ? Theme.warn : Theme.muted
        }
        Figure {
            id: number
            x: parent.width - width - 16
            y: row.wide ? row.middle - 10 : row.middle - 18
            width: implicitWidth
            alignment: Figure.Right
            text: row.figure
            font: row.member ? Theme.body : Theme.strong
            color: Theme.text
        }
        CaptionText {
            id: review
            x: row.wide ? parent.width - 116 - width : parent.width - width - 16
            y: row.wide ? row.middle - 8 : row.middle + 2
            text: row.review
            color: Theme.ember
        }
        StackedBarItem {
            id: bar
            x: parent.width - 250 - width
            y: row.middle - 4
            width: Math.max(60, Math.min(240, Math.round(parent.width * 0.28)))
            height: 8
            visible: row.wide
            radius: 3
            values: row.shares
            colors: [Theme.emberFill, Theme.accent, Theme.dev, Theme.faint]
            trackColor: Theme.track
        }
    }
    HoverTip {
        text: row.about
        wanted: row.hovered
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()
    Keys.onRightPressed: if (row.foldable) row.foldWanted(true)
    Keys.onLeftPressed: if (row.foldable) row.foldWanted(false)

    Accessible.role: Accessible.ListItem
    Accessible.name: row.title + " " + row.figure
    Accessible.description: [subtitle, review, about].filter(text => text.length > 0).join(". ")
    Accessible.onPressAction: row.clicked()
}
