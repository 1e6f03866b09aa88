import QtQuick
import Varnet

// The whole disk: how full it is, and a map of what fills it. Fills what is below the page's head.
FocusScope {
    id: view

    // At both sides and below.
    required property int padding

    readonly property int room: width - 2 * padding
    readonly property int gap: padding < 24 ? 12 : 16
    // The list finds no room beside the map.
    readonly property bool stacked: width < 760
    readonly property int mapTop: disk.hasCapacity ? 102 : 56
    // With nothing in it and nothing sought, the list gives its room to whoever says why.
    readonly property bool listed: disk.asList || disk.hasRows || disk.hasEmpty || disk.search.length > 0
                                   || disk.noticeTitle.length === 0
    readonly property int mapWidth: stacked || !listed ? room : room - 280 - gap
    // Down to the foot; where the list is below, its top peeks out.
    readonly property int mapHeight: Math.max(240, height - mapTop - foot.height - 4 - (stacked && listed ? 84 : padding - 8))
    // A list alone keeps room for a few rows.
    readonly property int listHeight: Math.max(52 + 5 * 49 + list.below, height - mapTop - foot.height - 4 - (padding - 8))

    function explainAccess(): void { access.open() }

    objectName: "wholeDisk"

    Connections {
        target: Store
        function onSearchFocusRequestChanged() { list.focusSearch() }
    }
    WholeDiskModel {
        id: disk
        onAccessExplanationRequested: view.explainAccess()
    }
    DiskAccessSheet { id: access }

    ScrollPage {
        id: page

        anchors.fill: parent
        focus: true
        visible: disk.started
        contentHeight: disk.asList ? view.mapTop + view.listHeight + 4 + foot.height + view.padding - 8
                     : view.stacked && view.listed ? list.y + list.height + view.padding : height

        DiskCapacityLine {
            x: view.padding
            width: view.room
            visible: disk.hasCapacity
            model: disk
        }
        DiskBreadcrumb {
            x: view.padding
            y: view.mapTop - 44 + 3
            width: Math.max(0, tools.x - 8 - x)
            model: disk
        }
        Row {
            id: tools
            x: view.width - view.padding - width
            y: view.mapTop - 44
            spacing: 8

            Segmented {
                objectName: "diskLayout"
                label: Words.text("Layout")
                options: [Words.text("Map"), Words.text("List")]
                icons: ["storage", "list"]
                currentIndex: disk.asList ? 1 : 0
                onChosen: (index) => disk.asList = index === 1
            }
            Button {
                objectName: "diskScan"
                iconName: disk.scanIcon
                text: Words.text(disk.scanLabel)
                onClicked: disk.scanOrStop()
            }
        }
        Treemap {
            id: map

            objectName: "diskMap"
            x: view.padding
            y: view.mapTop
            width: view.mapWidth
            height: view.mapHeight
            // Without a tile it shows nothing, and keeps the keyboard until the next folder is there.
            visible: !disk.asList
            focus: true
            label: Words.text("Disk map")
            model: disk.map
            onOpened: (key) => disk.open(key)
            onWentUp: disk.goUp()
        }
        Card {
            x: view.padding
            y: view.mapTop
            width: view.mapWidth
            height: view.mapHeight
            visible: !disk.asList && !disk.hasTiles && disk.noticeTitle.length > 0

            DiskNotice {
                anchors.fill: parent
                model: disk
                inCard: true
            }
        }
        DiskFoot {
            id: foot
            x: view.padding
            y: disk.asList ? view.mapTop + view.listHeight + 4 : view.mapTop + view.mapHeight + 4
            width: disk.asList ? view.room : view.mapWidth
            model: disk
        }
        DiskList {
            id: list

            x: view.stacked || disk.asList ? view.padding : view.width - view.padding - width
            y: disk.asList || !view.stacked ? view.mapTop
               : view.mapTop + view.mapHeight + 4 + foot.height + view.gap
            width: view.stacked || disk.asList ? view.room : 280
            visible: view.listed
            height: disk.asList ? view.listHeight
                  : view.stacked ? Math.min(fullHeight, view.height - view.padding)
                  : view.height - y - view.padding
            model: disk
            litKey: map.hoveredKey
            onLit: (key) => map.hoveredKey = key
            // The pointer may have gone to a tile, which was told first.
            onUnlit: (key) => { if (map.hoveredKey === key) map.hoveredKey = "" }

            Binding {
                target: disk
                property: "firstRows"
                value: view.stacked && !disk.asList ? 8 : list.room
            }
        }
    }
    DiskNotice {
        anchors.fill: parent
        anchors.leftMargin: view.padding
        anchors.rightMargin: view.padding
        visible: !disk.started
        model: disk
    }
}
