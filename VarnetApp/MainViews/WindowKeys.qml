import QtQuick
import Varnet

// The main window's keys. While the welcome is up only those that lead out of it work.
Item {
    id: keys

    // The sidebar's pages.
    required property var pages

    Repeater {
        model: keys.pages

        Item {
            id: page

            required property string name
            required property int digit

            Shortcut {
                sequence: "Ctrl+" + page.digit
                enabled: Store.hasOnboarded
                onActivated: Store.navigate(page.name)
            }
        }
    }
    Shortcut {
        sequence: "Ctrl+F"
        enabled: Store.hasOnboarded
        onActivated: Store.requestSearch()
    }
    Shortcut {
        sequence: "Ctrl+O"
        enabled: Store.hasOnboarded
        onActivated: Store.navigate("overview")
    }
    Shortcut {
        sequence: "Ctrl+R"
        enabled: Store.hasOnboarded
        onActivated: Store.presentRoast()
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: Store.showSettings()
    }
    Shortcut {
        sequence: "Ctrl+W"
        onActivated: keys.Window.window.close()
    }
}
