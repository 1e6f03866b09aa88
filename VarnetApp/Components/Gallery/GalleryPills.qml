import QtQuick
import Varnet

Item {
    GalleryBlock {
        caption: "Pills"
        height: 100

        Row {
            x: 16
            y: 38
            spacing: 8

            Pill { kind: Pill.Port; text: ":3000" }
            Pill { kind: Pill.Port; text: "2 ports" }
            Pill { kind: Pill.Agent; text: "Claude Code" }
            Pill { kind: Pill.Agent; text: "Gemini CLI" }
            Pill { kind: Pill.Worktree; text: "feature/checkout" }
        }
        Row {
            x: 16
            y: 68
            spacing: 8

            Pill { kind: Pill.Warn; text: "Possibly forgotten" }
            Pill { kind: Pill.Neutral; text: "Background process" }
            Pill { kind: Pill.Review; text: "To review 7.7 GB" }
            Pill { kind: Pill.Good; text: "Stopped" }
        }
    }
    GalleryBlock {
        y: 116
        caption: "Toasts"
        height: 96

        Toast {
            x: 16
            y: 38
            text: "Django has left the building."
            closeLabel: "Close"
        }
    }
}
