import QtQuick
import QtQuick.Templates as T
import Varnet

// Something worth a look. The explanation is never cut: the row grows line by line.
T.ItemDelegate {
    id: row

    required property string title
    required property string explanation
    required property string iconName
    required property color tone
    required property string ignoreLabel
    // What pressing the row does, for a screen reader and the tooltip of nothing else.
    property string openLabel: title
    property string preview: ""

    // One line of explanation stands in the middle of the row.
    readonly property int wordsTop: Math.max(5, Math.floor((height - 23 - words.implicitHeight) / 2))

    signal opened
    signal ignored

    implicitWidth: 368
    implicitHeight: Math.max(60, 24 + words.implicitHeight + 6)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    onClicked: row.opened()

    contentItem: Item {
        Rectangle {
            x: 8
            y: 10
            width: 32
            height: 32
            radius: Theme.radius
            color: Theme.tint(row.tone)

            Icon {
                anchors.centerIn: parent
                size: 18
                name: row.iconName
                color: row.tone
            }
        }
        StrongText {
            x: 50
            y: row.wordsTop
            width: Math.max(0, ignore.x - x - 4)
            text: row.title
        }
        Button {
            id: ignore
            x: parent.width - 8 - width
            y: row.wordsTop - 5
            kind: Button.Link
            linkTone: row.hovered || row.preview === "hover" ? Theme.text : Theme.muted
            text: row.ignoreLabel
            onClicked: row.ignored()
        }
        CaptionText {
            id: words
            x: 50
            y: row.wordsTop + 19
            width: Math.max(0, parent.width - x - 12)
            text: row.explanation
            wrapMode: Text.Wrap
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.down || row.preview === "pressed" ? Theme.press
             : row.hovered || row.preview === "hover" ? Theme.hover : "transparent"

        Behavior on color {
            enabled: !row.down
            ColorAnimation { duration: Theme.hoverDuration }
        }
        FocusRing { shown: row.visualFocus || row.preview === "focus"; inside: true }
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.ListItem
    Accessible.name: row.title + " " + row.explanation
    Accessible.description: row.openLabel
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
