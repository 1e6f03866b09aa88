import QtQuick
import Varnet

// The pages, and at the foot what every page keeps at hand: the report to share and the settings.
Item {
    id: sidebar

    required property bool rail
    readonly property var pages: model.pages

    SidebarModel { id: model }

    Separator {
        anchors.right: parent.right
        height: parent.height
    }

    MascotItem {
        x: sidebar.rail ? 18 : 20
        y: 20
        width: 28
        height: 28
        animated: false
    }
    Row {
        x: 56
        y: 22
        visible: !sidebar.rail
        Accessible.role: Accessible.StaticText
        Accessible.name: "Varnet?"

        TitleText { text: "Varnet" }
        TitleText {
            text: "?"
            color: Theme.accent
        }
    }

    Column {
        x: 12
        y: 68
        width: sidebar.rail ? 40 : 184
        spacing: 2
        Accessible.role: Accessible.PageTabList
        Accessible.name: Words.text("Navigate")

        Repeater {
            model: model.pages

            Item {
                id: place

                required property string name
                required property string title
                required property string icon
                required property string count
                required property bool selected
                // Stands below the main block.
                required property bool apart

                width: parent.width
                height: row.y + row.height

                Separator {
                    visible: place.apart
                    x: sidebar.rail ? 4 : 12
                    y: 7
                    width: parent.width - 2 * x
                }
                SidebarRow {
                    id: row
                    y: place.apart ? 17 : 0
                    width: parent.width
                    iconName: place.icon
                    text: Words.text(place.title)
                    count: place.count
                    selected: place.selected
                    rail: sidebar.rail
                    onClicked: Store.navigate(place.name)
                    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                }
            }
        }
    }

    Button {
        id: share

        readonly property string label: Words.text("Share report")

        x: 12
        y: parent.height - 60 - height
        width: sidebar.rail ? 40 : 184
        height: sidebar.rail ? 36 : 32
        iconName: "share"
        text: sidebar.rail ? "" : label
        help: Words.text("Preview your Mac’s roast, then save or share it")
        onClicked: Store.presentRoast()
        Accessible.name: label
    }
    SidebarRow {
        x: 12
        y: parent.height - 16 - height
        width: sidebar.rail ? 40 : 184
        iconName: "settings"
        text: Words.text("Settings")
        rail: sidebar.rail
        onClicked: Store.showSettings()
        Accessible.role: Accessible.Button
    }
}
