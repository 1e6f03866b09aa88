import QtQuick
import Varnet

// The machine's report as it stood when it was asked for: nothing in it moves while it is looked at.
CardSheet {
    id: sheet

    required property RoastSheetModel report

    model: report
    title: Words.text("Your Mac’s report")
    sheetWidth: 592
    visible: Store.showRoast
    onClosed: Store.showRoast = false

    Item {
        width: parent?.width ?? 0
        height: 40

        Icon {
            x: 1
            anchors.verticalCenter: parent.verticalCenter
            size: 18
            name: "lock"
            color: Theme.good
        }
        Column {
            x: 30
            width: toggle.x - x - 12
            anchors.verticalCenter: parent.verticalCenter

            StrongText {
                width: parent.width
                text: Words.text("Include project names")
            }
            CaptionText {
                width: parent.width
                text: Words.text("No paths, commands or usernames.")
            }
        }
        Toggle {
            id: toggle
            objectName: "includeProjects"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            label: Words.text("Include project names")
            turnedOn: sheet.report.includeProjects
            onWanted: (on) => sheet.report.includeProjects = on
        }
    }
    CaptionText {
        width: parent?.width ?? 0
        text: Words.text("Captured when you opened this report")
    }
}
