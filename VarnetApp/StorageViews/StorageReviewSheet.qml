import QtQuick
import QtQuick.Templates as T
import Varnet

// Chooses what of a project moves to the Trash. Nothing moves before the user has confirmed it.
Sheet {
    id: sheet

    readonly property StorageReviewModel model: StorageReviewModel {}

    objectName: "storageReview"
    sheetWidth: 560
    title: model.title
    visible: model.open
    closePolicy: model.cleaning ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    initialFocus: model.hasCandidates ? confirmation : cancel
    onClosed: model.close()

    StoragePills {
        width: parent.width
        branch: sheet.model.branch
        source: sheet.model.source
        ofAgent: sheet.model.ofAgent
        worktree: sheet.model.worktree
        toReview: sheet.model.toReview
    }
    SheetIntroduction {
        width: parent.width
        waiting: sheet.model.cleaning
        text: sheet.model.cleaning ? Words.text("Checking files and running processes…")
            : Words.text("Only Git-ignored dependencies and build caches. Your source checkout, branches and Git metadata stay put.")
    }
    StorageCandidates {
        objectName: "reviewCandidates"
        width: parent.width
        visible: sheet.model.hasCandidates
        tickable: true
        locked: sheet.model.cleaning
        model: sheet.model.candidates
        onWanted: (key, ticked) => sheet.model.tick(key, ticked)
    }
    EmptyState {
        width: parent.width
        topPadding: 12
        bottomPadding: 12
        visible: !sheet.model.hasCandidates
        inCard: true
        iconName: "leaf"
        title: Words.text("Nothing to review")
        note: Words.text("No fully measured, Git-ignored dependency or cache folders found")
    }
    SheetExplanation {
        width: parent.width
        visible: sheet.model.hasCandidates
        iconName: "trash"
        iconTone: Theme.muted
        text: Words.text("Moves to Trash, not permanent deletion. Space is freed only after you empty Trash.")
    }
    Item {
        width: parent.width
        height: Math.max(28, words.height + 2)
        visible: sheet.model.hasCandidates

        Tick {
            id: confirmation
            objectName: "confirmReview"
            x: -5
            y: words.y + Math.round((Theme.bodyLine - height) / 2)
            enabled: !sheet.model.cleaning
            label: words.text
            ticked: sheet.model.confirmed
            onWanted: (ticked) => sheet.model.confirmed = ticked
        }
        Label {
            id: words
            x: 28
            y: 4
            width: parent.width - x
            text: Words.text("I’ve closed tasks using this project. Any local edits inside the selected folders will move too.")
            wrapMode: Text.Wrap
            Accessible.ignored: true

            TapHandler {
                enabled: !sheet.model.cleaning
                onTapped: sheet.model.confirmed = !sheet.model.confirmed
            }
        }
    }

    foot: [
        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, buttons.x - 12)
            visible: sheet.model.hasCandidates
            text: Words.text(sheet.model.chosen)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        },
        Row {
            id: buttons
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Button {
                id: cancel
                objectName: "cancelReview"
                enabled: !sheet.model.cleaning
                text: sheet.model.hasCandidates ? Words.text("Cancel") : Words.text("Done")
                onClicked: sheet.close()
            }
            Button {
                objectName: "moveToTrash"
                visible: sheet.model.hasCandidates
                enabled: sheet.model.canMove
                disabledReason: sheet.model.cleaning ? "" : Words.text(sheet.model.reason)
                kind: Button.Primary
                iconName: "trash"
                text: Words.text("Move to Trash")
                onClicked: sheet.model.moveToTrash()
            }
        }
    ]
}
