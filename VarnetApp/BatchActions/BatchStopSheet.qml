import QtQuick
import QtQuick.Templates as T
import Varnet

// Reviews the stop of a selection, waits for the exits, and tells what came of it.
Sheet {
    id: sheet

    readonly property bool reviewing: !model.waiting && !model.finished
    readonly property BatchStopSheetModel model: BatchStopSheetModel {}

    objectName: "batchStopSheet"
    title: Words.text(model.title)
    visible: model.open
    closePolicy: model.waiting ? T.Popup.NoAutoClose : T.Popup.CloseOnEscape
    initialFocus: cancel
    onClosed: model.close()
    onReviewingChanged: if (visible && !model.waiting) cancel.forceActiveFocus(Qt.TabFocusReason)

    SheetIntroduction {
        width: parent.width
        waiting: sheet.model.waiting
        text: Words.text(sheet.model.introduction)
    }
    SheetList {
        width: parent.width
        tiles: true
        model: sheet.model.rows
    }
    Label {
        width: parent.width
        visible: text.length > 0
        text: Words.text(sheet.model.explanation)
        color: Theme.muted
        wrapMode: Text.Wrap
    }

    foot: [
        Button {
            objectName: "forceQuitRemaining"
            anchors.verticalCenter: parent.verticalCenter
            visible: sheet.model.hasSurvivors
            enabled: !sheet.model.waiting
            kind: Button.Danger
            text: Words.text("Force Quit remaining")
            onClicked: sheet.model.forceQuitRemaining()
        },
        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            visible: sheet.model.preview && sheet.reviewing
            text: Words.text("Preview · actions disabled")
        },
        Row {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Button {
                id: cancel
                objectName: "cancelBatch"
                enabled: !sheet.model.waiting
                kind: sheet.model.finished ? Button.Primary : Button.Secondary
                text: sheet.model.finished ? Words.text("Done") : Words.text("Cancel")
                onClicked: sheet.close()
            }
            Button {
                objectName: "quitSelected"
                visible: !sheet.model.finished
                enabled: !sheet.model.waiting && !sheet.model.preview
                disabledReason: sheet.model.preview ? Words.text("Preview · actions disabled") : ""
                kind: Button.Primary
                text: Words.text("Quit selected")
                onClicked: sheet.model.quitSelected()
            }
        }
    ]
}
