import QtQuick
import Varnet

GalleryBlock {
    caption: "Fields and menus"
    height: 212

    SearchField {
        x: 16
        y: 40
        width: 216
        placeholderText: "Search apps and processes"
        clearLabel: "Clear"
    }
    SearchField {
        x: 248
        y: 40
        width: 216
        text: "vite"
        placeholderText: "Search apps and processes"
        clearLabel: "Clear"
        preview: "focus"
    }
    MenuButton {
        x: 16
        y: 88
        label: "Agent"
        iconName: "agent"
        text: "All agents"
        menu: Menu {}
    }
    Rectangle {
        x: 16
        y: 136
        width: 216
        height: 50
        radius: Theme.radius
        color: Theme.raised
        border.color: Theme.controlLine

        CaptionText {
            x: 10
            y: 10
            width: parent.width - 20
            text: "Review this server and its workers before stopping"
            color: Theme.text
            wrapMode: Text.Wrap
        }
    }
    Rectangle {
        x: 248
        y: 84
        width: 216
        height: 116
        radius: Theme.radiusCard
        color: Theme.raised
        border.color: Theme.controlLine

        Column {
            x: 4
            y: 4

            MenuRow { width: 208; text: "All agents"; checkable: true; checked: true }
            MenuRow { width: 208; text: "Claude Code"; preview: "hover" }
            MenuRow { width: 208; text: "Codex" }
        }
    }
}
