pragma ComponentBehavior: Bound

import QtQuick
import Varnet

// One project: where it is, what its space is for, what Git says, and what could be reviewed.
Sheet {
    id: sheet

    readonly property StorageDetailModel model: StorageDetailModel {}

    objectName: "storageDetail"
    sheetWidth: 560
    title: model.title
    visible: model.open
    initialFocus: done
    onClosed: model.close()

    StoragePills {
        width: parent.width
        branch: ""
        source: sheet.model.source
        ofAgent: sheet.model.ofAgent
        worktree: sheet.model.worktree
        partial: sheet.model.partial
        toReview: sheet.model.toReview
    }
    Item {
        width: parent.width
        height: path.height + 4 + reveal.height

        Label {
            id: path
            width: parent.width
            text: sheet.model.path
            color: Theme.muted
            wrapMode: Text.WrapAnywhere
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Button {
            id: reveal
            objectName: "revealProject"
            y: path.height + 4
            size: Button.Small
            iconName: "folder"
            text: Words.text("Show this exact folder in Finder")
            onClicked: sheet.model.reveal()
        }
    }
    StorageBuckets {
        width: parent.width
        model: sheet.model.buckets
        size: sheet.model.size
    }
    Column {
        width: parent.width
        spacing: 2

        Repeater {
            model: sheet.model.facts

            Item {
                id: fact

                required property string label
                required property string words
                required property bool ours

                width: parent?.width ?? 0
                height: value.height + 2

                Label {
                    width: 112
                    text: Words.text(fact.label)
                    color: Theme.muted
                }
                Label {
                    id: value
                    x: 120
                    width: Math.max(0, parent.width - x)
                    text: fact.ours ? Words.text(fact.words) : fact.words
                    wrapMode: Text.Wrap
                }

                Accessible.role: Accessible.StaticText
                Accessible.name: Words.text(fact.label) + " " + value.text
            }
        }
    }
    SectionHeading {
        width: parent.width
        title: Words.text("To review")
    }
    StorageCandidates {
        width: parent.width
        visible: sheet.model.hasCandidates
        model: sheet.model.candidates
    }
    Label {
        width: parent.width
        visible: !sheet.model.hasCandidates
        text: Words.text("No fully measured, Git-ignored dependency or cache folders found")
        color: Theme.muted
        wrapMode: Text.Wrap
    }
    SheetExplanation {
        width: parent.width
        iconName: "warning"
        iconTone: Theme.warn
        text: Words.text("Age and a clean Git status don’t prove a workspace is disposable. Untracked files, local commits and app records can still matter.")
    }
    SheetExplanation {
        width: parent.width
        visible: sheet.model.worktree
        iconName: "projects"
        iconTone: Theme.muted
        text: Words.text("Remove whole worktrees through the tool that created them. This app keeps the checkout, branch and Git metadata intact.")
    }
    Item {
        width: parent.width
        height: manager.height + 8 + openManager.height
        visible: sheet.model.managed

        SheetExplanation {
            id: manager
            width: parent.width
            iconName: "box"
            iconTone: Theme.muted
            text: Words.text("Finished with this worktree? Archive it in Conductor so its workspace records stay in sync.")
        }
        Button {
            id: openManager
            objectName: "openConductor"
            x: 26
            y: manager.height + 8
            size: Button.Small
            iconName: "external"
            text: Words.text("Open Conductor")
            onClicked: sheet.model.openManager()
        }
    }

    foot: Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Button {
            id: done
            objectName: "closeDetail"
            text: Words.text("Done")
            onClicked: sheet.close()
        }
        Button {
            objectName: "reviewProject"
            visible: sheet.model.hasCandidates
            kind: Button.Primary
            text: Words.text("Review folders")
            onClicked: sheet.model.review()
        }
    }
}
