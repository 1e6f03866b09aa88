import QtQuick
import Varnet

// The battery: its charge and how long it lasts, its past week, what used it, and how it ages.
FocusScope {
    id: view

    // The window has only room for little padding and one column.
    required property bool narrow

    readonly property int padding: narrow ? 16 : 24
    readonly property int gap: narrow ? 12 : 16
    readonly property int room: width - 2 * padding
    // In very wide windows lines would grow too long to follow.
    readonly property int column: view.Window.width > 1280 ? Math.min(room, 1080) : room

    BatteryModel { id: battery }

    Timer {
        interval: 1000
        repeat: true
        running: view.visible && view.Window.visibility !== Window.Hidden
                 && view.Window.visibility !== Window.Minimized
        onTriggered: battery.tick()
    }

    ScrollPage {
        anchors.fill: parent
        focus: true
        contentHeight: blocks.y + blocks.height + view.padding

        Column {
            id: blocks

            x: view.padding
            y: view.narrow ? 16 : 20
            width: view.column
            spacing: view.gap

            PageHead {
                width: parent.width
                // The first card stands where it stands on every page.
                height: implicitHeight + 16 - view.gap
                headline: Words.text("Battery")
                line: Words.text(battery.line)
                note: battery.hasPage ? Words.text(battery.updated) : ""
            }
            BatteryWarning {
                width: parent.width
                visible: battery.warning.length > 0
                text: Words.text(battery.warning)
            }
            Item {
                width: parent.width
                height: 152
                visible: battery.hasPage

                BatteryCharge {
                    id: charge
                    width: view.narrow ? 252 : 304
                    height: parent.height
                    compact: view.narrow
                    model: battery
                }
                BatteryFigures {
                    x: charge.width + view.gap
                    width: parent.width - x
                    height: parent.height
                    gap: view.narrow ? 8 : 12
                    model: battery
                }
            }
            BatteryChart {
                width: parent.width
                visible: battery.hasPage
            }
            Grid {
                id: lower

                readonly property int first: view.narrow ? width : Math.round((width - spacing) * 0.615)

                width: parent.width
                visible: battery.hasPage
                columns: view.narrow ? 1 : 2
                spacing: view.gap

                BatteryApps {
                    width: lower.first
                    model: battery
                }
                BatteryHealth {
                    width: view.narrow ? lower.width : lower.width - lower.first - lower.spacing
                }
            }
            BatterySessions {
                width: parent.width
                visible: battery.hasPage && battery.hasSessions
                model: battery
            }
        }
        EmptyState {
            x: view.padding + Math.round((view.column - width) / 2)
            y: Math.round(blocks.y + blocks.height + (view.height - blocks.height - height) * 0.24)
            width: Math.min(480, view.column)
            visible: !battery.hasPage
            iconName: "plug"
            title: Words.text("No battery to watch.")
            note: Words.text("This machine runs on its cord. Nothing to charge, and nothing that wears out.")
        }
    }
}
