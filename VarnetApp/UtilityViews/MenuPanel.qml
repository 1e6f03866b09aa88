import QtQuick
import QtQuick.Templates as T
import Varnet

// The panel by the tray. It is as high as what it shows, up to a limit from which its middle scrolls.
FocusScope {
    id: panel

    readonly property int tallest: 640
    readonly property int contentHeight: Math.ceil(head.height + rows.implicitHeight + foot.implicitHeight)

    implicitWidth: 340
    implicitHeight: Math.min(tallest, contentHeight)
    focus: true
    Keys.onEscapePressed: panelModel.close()

    PanelModel { id: panelModel }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
        border.color: Theme.controlLine
        border.width: 1
    }
    GlowItem {
        x: 1
        y: 1
        width: parent.width - 2
        height: Math.max(0, Math.min(parent.height - foot.height, 240) - 2)
        center: Qt.point(43, greeting.y + Math.round(greeting.height / 2))
        radius: 150
        cornerRadius: 0
        strength: Theme.dark ? 0.22 : 0.16
    }

    Item {
        id: head
        width: parent.width
        height: figures.y + figures.height

        UpdateRow {
            id: update
            objectName: "update"
            x: 12
            y: 12
            width: parent.width - 24
            visible: panelModel.update.length > 0
            text: Words.text(panelModel.update)
            help: Words.text("Download and install the update inside the app")
            onClicked: panelModel.openUpdate()
        }
        Item {
            id: greeting
            x: 12
            y: update.visible ? 56 : 12
            width: parent.width - 24
            height: Math.max(64, line.implicitHeight)

            MascotItem {
                anchors.verticalCenter: parent.verticalCenter
                width: 64
                height: 64
                expression: panelModel.expression
            }
            HeadlineText {
                id: line
                x: 76
                width: parent.width - x
                anchors.verticalCenter: parent.verticalCenter
                compact: true
                words: Words.text(panelModel.headline)
            }
        }
        Row {
            id: figures
            x: 12
            y: greeting.y + greeting.height + 12
            spacing: 8

            PanelFigure {
                objectName: "cpu"
                label: Words.text("WHOLE MAC CPU")
                figure: panelModel.cpu
                fraction: panelModel.cpuShare
                tone: Theme.accent
            }
            PanelFigure {
                objectName: "memory"
                label: Words.text("PROCESS MEMORY")
                figure: panelModel.memory
                fraction: panelModel.memoryShare
                tone: Theme.memory
                help: Words.text("Memory for apps and background tasks, including data your Mac has packed smaller or temporarily put on disk. It is counted at its full size, so it can be larger than your RAM.")
            }
        }
    }

    Flickable {
        id: middle

        // Brings the row that the keyboard has reached into view.
        function reveal(row: Item): void {
            const top = row.mapToItem(rows, 0, 0).y;
            contentY = Math.max(0, Math.min(Math.max(contentY, top + row.height + 4 - height), top - 4));
        }

        objectName: "middle"
        anchors.top: head.bottom
        anchors.bottom: foot.top
        width: parent.width
        contentHeight: rows.implicitHeight
        interactive: contentHeight > height
        clip: interactive
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollThumb {}

        Column {
            id: rows
            x: 12
            width: parent.width - 24
            topPadding: 9
            bottomPadding: 12

            PanelHeading {
                width: parent.width
                visible: findings.count > 0
                title: Words.text("Needs attention")
                note: panelModel.findingCount
            }
            Repeater {
                id: findings
                model: panelModel.findings

                PanelFindingRow {
                    objectName: key
                    width: rows.width
                    onClicked: panelModel.inspectFinding(key)
                    onActiveFocusChanged: if (activeFocus) middle.reveal(this)
                }
            }
            Item {
                width: 1
                height: findings.count > 0 ? 9 : 0
            }
            PanelHeading {
                width: parent.width
                title: Words.text("Using the most CPU")
                note: groups.count > 0 ? Words.text("CPU / RAM") : ""
            }
            PanelNotice {
                width: parent.width
                visible: text.length > 0
                failed: panelModel.failed
                text: Words.text(panelModel.notice)
            }
            Repeater {
                id: groups
                model: panelModel.topGroups

                PanelGroupRow {
                    objectName: key
                    width: rows.width
                    onClicked: panelModel.inspectGroup(key)
                    onActiveFocusChanged: if (activeFocus) middle.reveal(this)
                }
            }
        }
    }

    PanelFoot {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        canCheckForUpdates: panelModel.canCheckForUpdates
        onShareRequested: panelModel.shareReport()
        onOverviewRequested: panelModel.openOverview()
        onSettingsRequested: panelModel.openSettings()
        onUpdateCheckRequested: panelModel.checkForUpdates()
        onFeedbackRequested: panelModel.sendFeedback()
        onQuitRequested: panelModel.quit()
    }
}
