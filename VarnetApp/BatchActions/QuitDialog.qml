import QtQuick
import Varnet

// The question before an application is quit. Without an answer nothing happens.
Sheet {
    id: dialog

    readonly property QuitDialogModel model: QuitDialogModel {}

    objectName: "quitDialog"
    sheetWidth: 420
    title: Words.text(model.message)
    visible: model.open
    initialFocus: cancel
    onClosed: model.cancel()

    Item {
        width: parent.width
        height: words.height

        Icon {
            id: mark
            y: 1
            size: 18
            name: dialog.model.critical ? "warning" : "info"
            color: dialog.model.critical ? Theme.warn : Theme.muted
        }
        Label {
            id: words
            x: 28
            width: parent.width - x
            text: Words.text(dialog.model.text)
            color: Theme.muted
            wrapMode: Text.Wrap
        }
    }

    foot: [
        Button {
            objectName: "dialogForceQuit"
            anchors.verticalCenter: parent.verticalCenter
            visible: dialog.model.forceQuitTitle.length > 0
            kind: Button.Danger
            text: Words.text(dialog.model.forceQuitTitle)
            onClicked: dialog.model.forceQuit()
        },
        Row {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Button {
                id: cancel
                objectName: "dialogCancel"
                text: Words.text("Cancel")
                onClicked: dialog.close()
            }
            Button {
                objectName: "dialogQuit"
                kind: dialog.model.critical ? Button.Danger : Button.Primary
                text: Words.text(dialog.model.quitTitle)
                onClicked: dialog.model.quit()
            }
        }
    ]
}
