import QtQuick
import QtQuick.Dialogs
import Varnet

// The desktop's own dialog for a new file, or where it has none one inside the window.
FileDialog {
    id: dialog

    signal chosen(url file)
    // It has gone, or did not come.
    signal closed(bool shown)

    readonly property DialogRemains remains: DialogRemains {}

    title: Words.text("Save PNG")
    fileMode: FileDialog.SaveFile
    defaultSuffix: "png"
    nameFilters: ["PNG (*.png)"]
    onAccepted: {
        dialog.chosen(dialog.selectedFile);
        dialog.closed(true);
    }
    onRejected: dialog.closed(true)

    function ask(suggested: url): void {
        selectedFile = suggested;
        open();
        remains.note();
        if (!visible)
            dialog.closed(false);
    }
}
