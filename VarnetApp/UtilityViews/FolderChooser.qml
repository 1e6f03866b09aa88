import QtQuick
import QtQuick.Dialogs
import Varnet

// The desktop's own folder chooser, or where it has none one inside the window.
FolderDialog {
    id: dialog

    signal chosen(url folder)
    // It has gone, or did not come.
    signal closed(bool shown)

    readonly property DialogRemains remains: DialogRemains {}

    title: Words.text("Grant access to a project folder")
    onAccepted: {
        dialog.chosen(dialog.selectedFolder);
        dialog.closed(true);
    }
    onRejected: dialog.closed(true)

    function ask(): void {
        open();
        remains.note();
        if (!visible)
            dialog.closed(false);
    }
}
