import QtQuick
import Varnet

// The first page: what the machine is doing, and what deserves a look.
FocusScope {
    id: view

    // The window has only room for the compact hero and one column.
    required property bool narrow

    readonly property int padding: narrow ? 16 : 24
    readonly property int gap: narrow ? 12 : 16
    readonly property int room: width - 2 * padding
    // In very wide windows lines would grow too long to follow.
    readonly property int column: view.Window.width > 1280 ? Math.min(room, 1080) : room

    OverviewModel { id: overview }

    Timer {
        interval: 1000
        repeat: true
        running: view.visible && view.Window.visibility !== Window.Hidden
                 && view.Window.visibility !== Window.Minimized
        onTriggered: overview.tick()
    }

    ScrollPage {
        id: page

        anchors.fill: parent
        focus: true
        contentHeight: blocks.y + blocks.height + (view.narrow ? 16 : 24)

        Column {
            id: blocks

            x: view.padding
            y: view.narrow ? 16 : 20
            width: view.column
            spacing: view.gap

            OverviewHero {
                width: parent.width
                compact: view.narrow
                headline: Words.text(overview.headline)
                explanation: Words.text(overview.explanation)
                observations: overview.observations
                expression: overview.expression
                cpu: overview.cpu
                cpuFraction: overview.cpuFraction
                thermal: Words.text(overview.thermal)
                thermalTone: Theme[overview.thermalTone] ?? Theme.good
                updated: Words.text(overview.updated)
            }
            OverviewMetrics {
                width: parent.width
                model: overview
            }
            OverviewContributors {
                width: parent.width
                model: overview
            }
            Grid {
                id: lower

                readonly property int half: view.narrow ? width : Math.floor((width - spacing) / 2)

                width: parent.width
                columns: view.narrow ? 1 : 2
                spacing: view.gap

                OverviewAttention {
                    id: attention
                    width: lower.half
                    model: overview
                }
                OverviewTimeline {
                    width: lower.width - (view.narrow ? 0 : lower.half + lower.spacing)
                    // As high as its neighbour, unless all findings are unfolded there.
                    height: view.narrow || attention.height > 220 ? implicitHeight : attention.height
                }
            }
        }
    }
}
