import QtQuick
import Varnet

GalleryBlock {
    caption: "Tick boxes, toggles, icon buttons"
    height: 236

    Row {
        x: 11
        y: 39
        spacing: 10

        Tick { label: "Meridian Browser" }
        Tick { label: "Meridian Browser"; preview: "hover" }
        Tick { label: "Meridian Browser"; preview: "pressed" }
        Tick { label: "Meridian Browser"; ticked: true }
        Tick { label: "Meridian Browser"; partial: true }
        Tick { label: "Meridian Browser"; preview: "focus" }
        Tick { label: "Meridian Browser"; enabled: false }
        Tick { label: "Meridian Browser"; ticked: true; enabled: false }
    }
    Row {
        x: 16
        y: 84
        spacing: 20

        Toggle { label: "Launch at login" }
        Toggle { label: "Launch at login"; turnedOn: true }
        Toggle { label: "Launch at login"; turnedOn: true; preview: "focus" }
        Toggle { label: "Launch at login"; enabled: false }
        Toggle { label: "Launch at login"; turnedOn: true; enabled: false }
        Spinner { label: "Working"; turn: 0.1; anchors.verticalCenter: parent.verticalCenter }
    }
    Row {
        x: 12
        y: 124
        spacing: 14

        IconButton { label: "Stop"; iconName: "stop" }
        IconButton { label: "Stop"; iconName: "stop"; preview: "hover" }
        IconButton { label: "Stop"; iconName: "stop"; preview: "pressed" }
        IconButton { label: "Stop"; iconName: "stop"; preview: "focus" }
        IconButton { label: "Stop"; iconName: "stop"; enabled: false }
        Button { kind: Button.Link; text: "View all 3" }
        Button { kind: Button.Link; text: "View all 3"; preview: "hover" }
        Button { size: Button.Small; text: "Restore" }
    }
    Segmented {
        x: 16
        y: 172
        label: "Sort"
        options: ["CPU", "Memory", "Name"]
        previewHover: 1
    }
    Segmented {
        x: 220
        y: 172
        label: "View"
        options: ["Map", "List"]
        icons: ["storage", "list"]
    }
    MenuButton {
        x: parent.width - 16 - width
        y: 172
        label: "Agent"
        iconName: "agent"
        text: "Cursor"
        tinted: true
        menu: Menu {}
    }
}
