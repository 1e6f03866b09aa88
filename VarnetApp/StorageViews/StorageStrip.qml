import QtQuick
import Varnet

// News above the map: what is going on, what is missing, or what came of something. Its words are never cut.
Rectangle {
    id: strip

    required property string title
    property list<string> lines
    property string aside: ""
    property string iconName: ""
    property bool busy: false
    property bool warns: false
    property bool strong: false
    property string closeLabel: ""
    property string actionLabel: ""
    property string actionName: ""

    readonly property color ink: warns ? Theme.tintText(Theme.warn) : Theme.text
    readonly property bool asideFits: aside.length > 0 && beside.implicitWidth + heading.implicitWidth + 32 <= words.width

    signal acted
    signal closed

    implicitHeight: Math.max(40, words.height + 20)
    radius: Theme.radiusCard
    color: warns ? Theme.cover(Theme.bg, Theme.tint(Theme.warn)) : Theme.surface
    border.color: Theme.hairline
    border.width: warns ? 0 : 1

    Loader {
        x: 14
        y: 10 + Math.round((Theme.bodyLine - height) / 2)
        width: 16
        height: 16
        active: strip.busy && strip.visible
        sourceComponent: Spinner {
            width: 16
            height: 16
            label: strip.title
        }
    }
    Icon {
        x: 14
        y: 12
        visible: strip.iconName.length > 0
        name: strip.iconName
        color: strip.warns ? Theme.tintText(Theme.warn) : Theme.muted
    }
    Column {
        id: words

        x: 42
        y: 10
        width: Math.max(0, buttons.x - x - (buttons.width > 0 ? 12 : 0))
        spacing: 1

        Label {
            id: heading
            width: parent.width - (strip.asideFits ? beside.implicitWidth + 16 : 0)
            text: strip.title
            font: strip.strong ? Theme.strong : Theme.body
            color: strip.ink
            wrapMode: Text.Wrap
        }
        Repeater {
            model: strip.lines

            CaptionText {
                required property string modelData

                width: words.width
                text: modelData
                color: strip.warns ? Theme.mix(strip.ink, Theme.muted, 0.5) : Theme.muted
                elide: strip.busy ? Text.ElideMiddle : Text.ElideRight
                wrapMode: strip.busy ? Text.NoWrap : Text.Wrap
            }
        }
        CaptionText {
            width: parent.width
            visible: strip.aside.length > 0 && !strip.asideFits
            text: strip.aside
            wrapMode: Text.Wrap
        }
    }
    CaptionText {
        id: beside
        x: strip.width - 14 - width
        y: 12
        visible: strip.asideFits
        text: strip.aside
    }
    Row {
        id: buttons

        x: strip.width - 10 - width
        y: 6
        spacing: 6

        Button {
            objectName: strip.actionName
            visible: strip.actionLabel.length > 0
            size: Button.Small
            iconName: "trash"
            text: strip.actionLabel
            onClicked: strip.acted()
        }
        IconButton {
            visible: strip.closeLabel.length > 0
            iconName: "close"
            iconSize: 16
            label: strip.closeLabel
            onClicked: strip.closed()
        }
    }

    Accessible.role: Accessible.AlertMessage
    Accessible.name: [title, ...lines, aside].filter(text => text.length > 0).join(" ")
}
