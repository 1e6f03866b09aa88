import QtQuick
import QtQuick.Dialogs

// The desktop's own folder chooser.
FolderDialog {
    id: dialog

    signal chosen(url folder)
    signal closed

    onAccepted: {
        dialog.chosen(dialog.selectedFolder);
        dialog.closed();
    }
    onRejected: dialog.closed()
    Component.onCompleted: open()
}
