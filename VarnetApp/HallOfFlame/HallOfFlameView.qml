import QtQuick
import Varnet

// Badges, what a week amounted to, and personal bests.
FocusScope {
    id: view

    // The window has only room for a rail beside the page.
    required property bool narrow

    readonly property int padding: narrow ? 16 : 24
    readonly property int room: width - 2 * padding
    // In very wide windows lines would grow too long to follow.
    readonly property int column: view.Window.width > 1280 ? Math.min(room, 1080) : room

    HallModel { id: hall }

    ScrollPage {
        anchors.fill: parent
        focus: true
        contentHeight: blocks.y + blocks.height + (view.narrow ? 16 : 24)

        Column {
            id: blocks
            objectName: "hallBlocks"

            x: view.padding
            y: view.narrow ? 16 : 20
            width: view.column

            HallHead {
                width: parent.width
                model: hall
            }
            Item {
                width: 1
                height: 20
            }
            HallBadges {
                width: parent.width
                model: hall
            }
            Item {
                width: 1
                height: 28
            }
            HallWeek {
                width: parent.width
                model: hall
                onShareRequested: {
                    weekly.freeze(hall.week);
                    weeklySheet.open();
                }
            }
            Item {
                width: 1
                height: 28
            }
            HallBests {
                width: parent.width
                model: hall
            }
        }
    }

    WeeklyRoastSheet {
        id: weeklySheet
        objectName: "weeklySheet"
        model: WeeklyRoastSheetModel { id: weekly }
    }
}
