import QtQuick
import Varnet

// Before the first scan: what it would do, and that it touches nothing.
Item {
    id: start

    signal scanWanted
    signal addWanted

    Column {
        x: Math.round((parent.width - width) / 2)
        y: Math.max(0, Math.round((parent.height - height) * 0.38))
        width: Math.min(440, parent.width)
        spacing: 20

        EmptyState {
            width: parent.width
            iconName: "storage"
            title: Words.text("Find your projects and agent worktrees.")
            note: Words.text("Scan agent worktrees and known projects. Files stay exactly where they are until you review them.")
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 8

            Button {
                objectName: "startScan"
                kind: Button.Primary
                size: Button.Large
                iconName: "search"
                text: Words.text("Scan projects")
                onClicked: start.scanWanted()
            }
            Button {
                objectName: "startAddFolder"
                size: Button.Large
                iconName: "plus"
                text: Words.text("Add folder")
                onClicked: start.addWanted()
            }
        }
    }
}
