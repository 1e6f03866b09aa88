import QtQuick
import Varnet

// What makes a finding, in full.
InfoPanel {
    id: panel

    title: Words.text("What gets flagged?")
    width: 340

    Repeater {
        model: [
            {
                title: "Sustained CPU",
                text: "At least 80% of one core for a full minute. Brief spikes don’t count."
            },
            {
                title: "Possibly forgotten server",
                text: "Running for 2+ hours, its observed agent exited 30+ minutes ago, and no other recognized agent is active in that worktree."
            },
            {
                title: "Similar servers",
                text: "Matching worktree, directory and command, running on different ports."
            },
            {
                title: "A server restarted",
                text: "A new matching instance appeared after you stopped the previous one."
            }
        ]

        Column {
            id: rule

            required property var modelData

            width: parent.width

            StrongText {
                width: parent.width
                text: Words.text(rule.modelData.title)
                wrapMode: Text.Wrap
            }
            Label {
                width: parent.width
                text: Words.text(rule.modelData.text)
                color: Theme.muted
                wrapMode: Text.Wrap
            }
        }
    }
    Separator { width: parent.width }
    CaptionText {
        width: parent.width
        text: Words.text("These are clues to review. The app never stops anything automatically.")
        wrapMode: Text.Wrap
    }
}
