import QtQuick
import Varnet

// A picture to share, with what can be done to it.
Sheet {
    id: sheet

    required property CardSheetModel model
    default property alias extra: column.data

    property string subtitle: ""

    // What the picture must leave of the window's height for the words around it.
    readonly property int wordsHeight: 60 + (lead.visible ? lead.implicitHeight + 12 : 0) + column.implicitHeight + 12 + bottomGap + 65
    readonly property int widest: Math.floor(Math.max(160, tallest - wordsHeight) / model.aspect)

    closeLabel: Words.text("Close")
    initialFocus: save

    Label {
        id: lead
        width: parent?.width ?? 0
        visible: text.length > 0
        text: sheet.subtitle
        color: Theme.muted
        wrapMode: Text.Wrap
    }
    Rectangle {
        width: Math.min(parent?.width ?? 0, sheet.widest)
        height: Math.round((width - 2) * sheet.model.aspect) + 2
        anchors.horizontalCenter: parent?.horizontalCenter
        color: "transparent"
        border.color: Theme.controlLine
        border.width: 1

        CardItem {
            x: 1
            y: 1
            width: parent.width - 2
            height: parent.height - 2
            model: sheet.model
        }
        Accessible.role: Accessible.Graphic
        Accessible.name: sheet.model.description
    }
    Column {
        id: column
        width: parent?.width ?? 0
        visible: children.length > 0
        spacing: 12
    }

    foot: [
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: message.text.length > 0
            name: sheet.model.failed ? "warning" : "check"
            color: message.color
        },
        Label {
            id: message
            objectName: "cardMessage"
            x: 22
            width: buttons.x - x - 12
            anchors.verticalCenter: parent.verticalCenter
            text: Words.text(sheet.model.message)
            color: sheet.model.failed ? Theme.bad : Theme.good
            maximumLineCount: 2
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        },
        Row {
            id: buttons
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Button {
                objectName: "copyImage"
                iconName: "duplicate"
                text: Words.text("Copy image")
                enabled: sheet.model.ready
                onClicked: sheet.model.copy()
            }
            Button {
                id: save
                objectName: "savePng"
                kind: Button.Primary
                iconName: "download"
                text: Words.text("Save PNG")
                enabled: sheet.model.ready
                onClicked: dialog.active = true
            }
        },
        Loader {
            id: dialog

            function end(shown: bool): void {
                if (!shown)
                    sheet.model.cannotSave();
                // Not while it is still telling about it.
                Qt.callLater(() => dialog.active = false);
            }

            active: false
            // By name, so that what it needs is loaded by who asks for it alone.
            source: "SaveDialog.qml"
            onLoaded: {
                item.chosen.connect(file => sheet.model.save(file));
                item.closed.connect(end);
                item.ask(sheet.model.suggestedFile);
            }
            onStatusChanged: if (status === Loader.Error) end(false)
        }
    ]
}
