import QtQuick
import Varnet

// Asks for a folder with projects in it. The chooser is made when it is first wanted.
Item {
    id: adding

    required property ProjectStorageModel model

    property Item returnTo: null

    function ask(): void {
        // Prepared data has its own answer.
        if (adding.model.preview) {
            adding.model.addFolder("");
            return;
        }
        returnTo = Window.activeFocusItem;
        chooser.active = false;
        chooser.active = true;
    }
    function end(): void {
        Qt.callLater(() => chooser.active = false);
        if (returnTo)
            returnTo.forceActiveFocus(Qt.PopupFocusReason);
    }

    Loader {
        id: chooser

        active: false
        sourceComponent: FolderChooser {
            title: Words.text("Choose a projects or worktrees folder")
            acceptLabel: Words.text("Add folder")
            onChosen: (folder) => adding.model.addFolder(folder)
            onClosed: adding.end()
        }
        onLoaded: (item as FolderChooser).ask()
    }
}
