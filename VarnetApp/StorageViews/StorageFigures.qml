import QtQuick
import Varnet

// The four figures, each with what it means.
Row {
    id: figures

    required property ProjectStorageModel model

    spacing: 32

    StorageFigure {
        label: Words.text("Allocated")
        value: figures.model.allocated
        help: Words.text("Allocated space across scanned folders. Shared APFS blocks may overlap, so this is not guaranteed free space.")
    }
    StorageFigure {
        label: Words.text("To review")
        value: figures.model.toReview
        tone: Theme.ember
        help: Words.text("To review includes fully measured, Git-ignored dependency and cache folders. You choose what moves to Trash.")
    }
    StorageFigure {
        label: Words.text("Projects")
        value: figures.model.projects
        help: Words.text("Folders of one code base count as one project.") + " " + Words.text(figures.model.measured)
    }
    StorageFigure {
        label: Words.text("Worktrees")
        value: figures.model.worktrees
        help: Words.text("Checkouts that share their repository with another folder, mostly made by agents.")
    }
}
