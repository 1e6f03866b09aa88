import QtQuick
import Varnet

GalleryBlock {
    caption: "Sidebar rows: selected, hover, focus"
    width: 232
    height: 372

    Separator {
        x: 219
        y: 36
        height: 326
    }
    Column {
        x: 24
        y: 40
        spacing: 2

        SidebarRow { iconName: "overview"; text: "Overview"; count: "41"; selected: true }
        SidebarRow { iconName: "apps"; text: "Apps"; count: "37"; preview: "hover" }
        SidebarRow { iconName: "projects"; text: "Projects"; count: "4" }
        SidebarRow { iconName: "servers"; text: "Servers"; count: "6"; preview: "focus" }
        SidebarRow { iconName: "storage"; text: "Storage" }
        SidebarRow { iconName: "hall"; text: "Hall of Flame"; count: "12" }
        Item {
            width: 184
            height: 15
            Separator { x: 12; y: 7; width: 160 }
        }
        SidebarRow { iconName: "sources"; text: "All sources"; count: "41" }
        SidebarRow { iconName: "battery"; text: "Battery" }
    }
}
