import QtQuick
import Varnet

GalleryBlock {
    caption: "Icons: 20 grid, 1.5 stroke, round caps"
    width: 992
    height: 120

    Grid {
        x: 16
        y: 40
        columns: 32
        columnSpacing: 10
        rowSpacing: 14

        Repeater {
            model: ["overview", "apps", "projects", "servers", "storage", "hall", "sources", "battery", "settings",
                "share", "search", "stop", "trash", "refresh", "external", "info", "warning", "hourglass", "moon",
                "duplicate", "flame", "fan", "memory", "cpu", "thermo", "globe", "folder", "lock", "agent",
                "terminal", "clock", "bolt", "download", "window", "list", "home", "film", "file", "image", "music",
                "code", "people", "crown", "leaf", "backpack", "suitcase", "box", "cup", "book", "calendar", "medal",
                "masks", "plane", "sparkles", "broom", "plug", "heart", "check", "minus", "plus", "close", "left",
                "right", "dots"]
            Icon {
                required property string modelData
                name: modelData
                size: 20
                color: Theme.text
            }
        }
    }
}
