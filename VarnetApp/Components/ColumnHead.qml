import QtQuick
import QtQuick.Templates as T
import Varnet

// The head of a list's column; pressing it sorts by it.
T.AbstractButton {
    id: head

    property bool sorted: false
    property bool rightAligned: true
    property string preview: ""

    readonly property color ink: sorted || hovered || preview === "hover" ? Theme.text : Theme.muted

    implicitWidth: Math.ceil(words.implicitWidth) + 14
    implicitHeight: 24
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    contentItem: Item {
        CaptionText {
            id: words
            x: head.rightAligned ? parent.width - width - (head.sorted ? 14 : 0) : 0
            width: Math.min(Math.ceil(implicitWidth), Math.max(0, parent.width - (head.sorted ? 14 : 0)))
            anchors.verticalCenter: parent.verticalCenter
            text: head.text
            font: head.sorted ? Theme.captionStrong : Theme.caption
            color: head.ink
        }
        Icon {
            x: words.x + words.width + 2
            anchors.verticalCenter: parent.verticalCenter
            size: 12
            name: head.sorted ? "down" : ""
            color: Theme.accent
        }
    }
    background: Item {
        FocusRing {
            cornerRadius: 4
            inside: true
            shown: head.visualFocus || head.preview === "focus"
        }
    }

    Keys.onReturnPressed: head.clicked()
    Keys.onEnterPressed: head.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: head.text
    Accessible.selected: head.sorted
    Accessible.onPressAction: if (head.enabled) head.clicked()
}
