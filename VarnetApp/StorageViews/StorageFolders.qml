pragma ComponentBehavior: Bound

import QtQuick
import Varnet

// The folders that the user has added: the page can be restricted to one, and one can be taken off the list.
InfoPanel {
    id: panel

    required property ProjectStorageModel model

    signal addWanted

    title: Words.text("Folders")
    width: 340
    // Lines that come and go must not move it away from its button.
    x: parent ? parent.width - width : 0

    Column {
        x: -8
        width: parent.width + 16

        StorageFolderLine {
            objectName: "allFolders"
            width: parent.width
            title: Words.text("All folders")
            path: ""
            chosen: panel.model.focusedFolder < 0
            onClicked: {
                panel.model.focusFolder(-1);
                panel.close();
            }
        }
        Repeater {
            model: panel.model.folders

            StorageFolderLine {
                required property int index
                required property string modelData

                objectName: "folder" + index
                width: parent?.width ?? 0
                title: modelData.split("/").pop()
                path: modelData
                removable: true
                chosen: panel.model.focusedFolder === index
                onClicked: {
                    panel.model.focusFolder(index);
                    panel.close();
                }
                onRemoved: panel.model.removeFolder(index)
            }
        }
    }
    CaptionText {
        width: parent.width
        text: Words.text("Taking a folder off this list touches no file.")
        wrapMode: Text.Wrap
    }
    Button {
        objectName: "folderPanelAdd"
        iconName: "plus"
        text: Words.text("Add folder")
        onClicked: {
            panel.close();
            panel.addWanted();
        }
    }
}
