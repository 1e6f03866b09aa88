import QtQuick
import QtQuick.Templates as T
import Varnet

// Reviews the stop of one service or process, waits for the exits, and tells what came of it.
Sheet {
    id: sheet

    readonly property bool reviewing: !model.waiting && !model.finished
    readonly property StopSheetModel model: StopSheetModel {}

    objectName: "stopSheet"
    title: Words.text(model.title)
    visible: model.open
    closePolicy: model.waiting ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    initialFocus: cancel
    onClosed: model.close()
    // The word on the button that has the keyboard changes, not the button.
    onReviewingChanged: if (visible && !model.waiting) cancel.forceActiveFocus(Qt.TabFocusReason)

    Flow {
        width: parent.width
        spacing: 6
        visible: sheet.reviewing

        Pill {
            kind: Pill.Neutral
            text: Words.text(sheet.model.project)
        }
        Pill {
            visible: sheet.model.worktree.length > 0
            kind: Pill.Worktree
            text: sheet.model.worktree
        }
        Repeater {
            model: sheet.model.ports

            Pill {
                required property string modelData
                kind: Pill.Port
                text: modelData
            }
        }
        Pill {
            visible: sheet.model.agent.length > 0
            kind: Pill.Agent
            text: sheet.model.agent
        }
    }
    SheetIntroduction {
        width: parent.width
        waiting: sheet.model.waiting
        finished: sheet.model.finished
        text: Words.text(sheet.model.introduction)
    }
    SheetList {
        width: parent.width
        model: sheet.model.rows
    }
    Column {
        width: parent.width
        spacing: 4
        visible: !sheet.model.finished || sheet.model.hasSurvivors

        SheetExplanation {
            width: parent.width
            visible: !sheet.model.finished
            iconName: "check"
            iconTone: Theme.muted
            text: Words.text("Quit asks the processes to finish and close.")
        }
        SheetExplanation {
            width: parent.width
            iconName: "warning"
            iconTone: Theme.warn
            text: Words.text("Force Quit stops them immediately. Unsaved work may be lost.")
        }
    }

    foot: [
        Button {
            objectName: "forceQuit"
            anchors.verticalCenter: parent.verticalCenter
            visible: !sheet.model.finished || sheet.model.hasSurvivors
            enabled: !sheet.model.waiting
            kind: Button.Danger
            text: Words.text("Force Quit")
            onClicked: sheet.model.forceQuit()
        },
        Row {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Button {
                id: cancel
                objectName: "cancel"
                enabled: !sheet.model.waiting
                kind: sheet.model.finished ? Button.Primary : Button.Secondary
                text: sheet.model.finished ? Words.text("Done") : Words.text("Cancel")
                onClicked: sheet.close()
            }
            Button {
                objectName: "quit"
                width: Math.max(88, implicitWidth)
                visible: !sheet.model.finished
                enabled: !sheet.model.waiting
                kind: Button.Primary
                text: Words.text("Quit")
                onClicked: sheet.model.quit()
            }
        }
    ]
}
