import QtQuick
import Varnet

// What a project is, in pills.
Flow {
    id: pills

    required property string branch
    required property string source
    required property bool ofAgent
    required property bool worktree
    property bool partial: false
    property string toReview: ""

    spacing: 6

    Pill {
        visible: text.length > 0
        kind: Pill.Worktree
        iconName: pills.worktree ? "projects" : "folder"
        text: pills.branch
    }
    Pill {
        visible: text.length > 0
        kind: pills.ofAgent ? Pill.Agent : Pill.Neutral
        text: pills.ofAgent ? pills.source : Words.text(pills.source)
    }
    Pill {
        visible: pills.partial
        kind: Pill.Warn
        iconName: "warning"
        text: Words.text("Partial measurement")
    }
    Pill {
        visible: text.length > 0
        kind: Pill.Review
        text: Words.text(pills.toReview)
    }
}
