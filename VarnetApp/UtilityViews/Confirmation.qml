import QtQuick
import Varnet

// Asks before something that cannot be undone. Nothing happens unless the one button is pressed that says so.
Sheet {
    id: sheet

    required property string question
    required property string confirm

    signal confirmed

    sheetWidth: 420
    initialFocus: cancel

    Label {
        width: parent.width
        text: sheet.question
        color: Theme.muted
        wrapMode: Text.Wrap
    }
    foot: Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Button {
            id: cancel
            objectName: "cancel"
            text: Words.text("Cancel")
            onClicked: sheet.close()
        }
        Button {
            objectName: "confirm"
            kind: Button.Danger
            text: sheet.confirm
            onClicked: {
                sheet.close();
                sheet.confirmed();
            }
        }
    }
}
