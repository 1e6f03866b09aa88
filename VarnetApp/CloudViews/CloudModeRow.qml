import QtQuick
import QtQuick.Templates as T
import Varnet

// One of several ways, of which one is taken.
T.RadioButton {
    id: row

    required property string title
    required property string note
    property bool taken: false
    property bool separated: true
    property string preview: ""

    // The user wants this one; the owner sets `taken`.
    signal wanted

    implicitHeight: Math.max(56, words.implicitHeight + 24)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    autoExclusive: false
    text: title
    checkable: false
    onClicked: if (!taken) row.wanted()

    contentItem: Item {
        RoundBox {
            x: 16
            y: 14
            width: 18
            height: 18
            radius: 9
            color: row.taken ? Theme.accent : Theme.surface
            lineColor: row.taken ? Theme.accent : Theme.controlLine
            lineWidth: 1

            RoundBox {
                visible: row.taken
                x: 6
                y: 6
                width: 6
                height: 6
                radius: 3
                color: Theme.accentInk
            }
        }
        Column {
            id: words
            x: 46
            width: parent.width - x - 16
            anchors.verticalCenter: parent.verticalCenter

            Label {
                width: parent.width
                text: row.title
                font: row.taken ? Theme.strong : Theme.bodyMedium
                color: row.enabled || row.taken ? Theme.text : Theme.faint
                wrapMode: Text.Wrap
            }
            CaptionText {
                width: parent.width
                text: row.note
                wrapMode: Text.Wrap
            }
        }
        Separator {
            visible: row.separated
            x: 16
            y: parent.height - 1
            width: parent.width - 32
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: 4
            radius: Theme.radius
            color: !row.enabled || row.taken ? "transparent" : row.down ? Theme.press
                 : row.hovered || row.preview === "hover" ? Theme.hover : "transparent"

            FocusRing { shown: row.visualFocus || row.preview === "focus"; inside: true }
        }
    }

    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    Accessible.role: Accessible.RadioButton
    Accessible.name: row.title
    Accessible.description: row.note
    Accessible.checked: row.taken
    Accessible.onPressAction: if (row.enabled) row.clicked()
}
