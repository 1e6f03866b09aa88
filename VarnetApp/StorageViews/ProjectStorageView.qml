import QtQuick
import Varnet

// What projects occupy: figures, a map and a list. Fills what is below the page's head.
FocusScope {
    id: view

    // At both sides and below.
    required property int padding

    readonly property int room: width - 2 * padding
    readonly property int gap: padding < 24 ? 12 : 16
    // The list finds no room beside the map.
    readonly property bool stacked: width < 760 && !projects.listOnly
    readonly property int mapWidth: stacked ? room : room - 280 - gap
    readonly property int mapTop: blocks.y + blocks.height + (crumbs.visible ? crumbs.height + 8 : 0)
    readonly property int mapHeight: Math.max(240, height - mapTop - legend.height - 8 - (stacked ? 84 : padding))

    ProjectStorageModel { id: projects }
    StorageAddFolder {
        id: addFolder
        model: projects
    }
    StorageFolders {
        id: folders
        model: projects
        onAddWanted: addFolder.ask()
    }
    Connections {
        target: Store
        function onSearchFocusRequestChanged() { list.focusSearch() }
    }

    ScrollPage {
        anchors.fill: parent
        focus: true
        contentHeight: view.stacked && list.visible ? list.y + list.height + view.padding : height

        Column {
            id: blocks

            x: view.padding
            width: view.room
            bottomPadding: projects.started ? 16 : 0
            spacing: 12

            Item {
                id: bar

                readonly property int least: figures.implicitWidth + 24 + tools.width
                readonly property bool wraps: least > width

                width: parent.width
                height: wraps ? 52 + 32 : 44
                visible: projects.started

                StorageFigures {
                    id: figures
                    model: projects
                }
                Row {
                    id: tools

                    x: bar.wraps ? 0 : bar.width - implicitWidth
                    y: bar.wraps ? 52 : 6
                    spacing: 8

                    Segmented {
                        objectName: "storageLayout"
                        label: Words.text("Layout")
                        options: [Words.text("Map"), Words.text("List")]
                        icons: ["storage", "list"]
                        currentIndex: projects.listOnly ? 1 : 0
                        onChosen: (index) => projects.listOnly = index === 1
                    }
                    Button {
                        objectName: "addFolder"
                        visible: projects.folders.length === 0
                        iconName: "plus"
                        text: Words.text("Add folder")
                        onClicked: addFolder.ask()
                    }
                    Button {
                        id: places

                        objectName: "storageFolders"
                        visible: projects.folders.length > 0
                        width: Math.min(implicitWidth, 150)
                        iconName: "folder"
                        trailingIcon: "down"
                        text: projects.focusName.length > 0 ? projects.focusName : Words.text("Folders")
                        onClicked: folders.toggleAt(places, places.height + 4)
                    }
                    Button {
                        objectName: "rescan"
                        visible: !projects.scanning
                        iconName: "refresh"
                        text: Words.text("Rescan")
                        onClicked: projects.rescan()
                    }
                    Button {
                        objectName: "stopScan"
                        visible: projects.scanning
                        iconName: "stop"
                        text: Words.text("Stop scan")
                        onClicked: projects.stopScan()
                    }
                }
            }
            StorageStrip {
                width: parent.width
                visible: projects.message.length > 0
                iconName: "info"
                title: Words.text(projects.message)
                closeLabel: Words.text("Dismiss storage message")
                actionLabel: projects.canRevealTrash ? Words.text("Show in Trash") : ""
                actionName: "showInTrash"
                onActed: projects.showTrash()
                onClosed: projects.dismissMessage()
            }
            StorageStrip {
                width: parent.width
                visible: projects.scanning
                busy: true
                strong: true
                title: Words.text("Scanning · No automatic cleanup")
                lines: [projects.progress.indexOf("/") > 0 ? projects.progress : Words.text(projects.progress)]
                aside: projects.listOnly ? "" : Words.text("The map fills in as the scan runs.")
            }
            StorageStrip {
                width: parent.width
                visible: projects.partial
                warns: true
                strong: true
                iconName: "warning"
                title: Words.text("Some folders weren’t fully measured")
                lines: [Words.text("Totals include only what could be read. Rescan to try again."),
                        ...projects.notes.map(note => Words.text(note))]
            }
        }
        StorageCrumbs {
            id: crumbs

            x: view.padding
            y: blocks.y + blocks.height - 6
            width: view.mapWidth
            visible: projects.started && !projects.listOnly && (projects.crumbs.length > 1 || projects.focusedFolder >= 0)
            model: projects
        }
        Treemap {
            id: map

            objectName: "projectMap"
            x: view.padding
            y: view.mapTop
            width: view.mapWidth
            height: view.mapHeight
            visible: projects.started && !projects.listOnly && !projects.mapEmpty
            label: Words.text("Projects")
            model: projects.map
            onOpened: (key) => projects.openTile(key)
            onWentUp: projects.goUp()
        }
        Card {
            x: view.padding
            y: view.mapTop
            width: projects.bare ? view.room : view.mapWidth
            height: projects.bare ? Math.max(200, view.height - y - view.padding) : view.mapHeight
            visible: projects.started && (projects.bare || (projects.mapEmpty && !projects.listOnly))

            EmptyState {
                anchors.centerIn: parent
                width: Math.min(320, parent.width - 32)
                inCard: true
                iconName: projects.empty ? "folder" : "hourglass"
                title: projects.empty ? Words.text("No projects found.")
                     : projects.scanning ? Words.text("The map fills in as the scan runs.")
                     : Words.text("Nothing was measured.")
                note: projects.empty ? Words.text("Add a folder that holds some, then rescan.")
                    : projects.scanning ? Words.text("Sizes appear one project at a time.")
                    : Words.text("Rescan to try again.")
            }
        }
        StorageLegend {
            id: legend

            x: view.padding
            y: view.mapTop + view.mapHeight + 8
            width: view.mapWidth
            visible: projects.started && !projects.listOnly && !projects.bare
        }
        StorageList {
            id: list

            x: view.stacked || projects.listOnly ? view.padding : view.width - view.padding - width
            y: view.stacked ? legend.y + legend.height + view.gap : blocks.y + blocks.height
            width: view.stacked || projects.listOnly ? view.room : 280
            height: view.stacked ? Math.min(fullHeight, view.height - view.padding)
                  : Math.max(200, view.height - y - view.padding)
            visible: projects.started && !projects.bare
            wide: projects.listOnly && width >= 600
            model: projects
            litKey: map.pointed ? projects.rowOf(map.hoveredKey) : ""
            onLit: (key) => map.hoveredKey = projects.tileOf(key)
        }
        StorageStart {
            x: view.padding
            y: blocks.y + blocks.height
            width: view.room
            height: view.height - y
            visible: !projects.started
            onScanWanted: projects.rescan()
            onAddWanted: addFolder.ask()
        }
    }
}
