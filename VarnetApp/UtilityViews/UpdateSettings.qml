import QtQuick
import Varnet

// What the settings say of updates, and the way to one.
SettingsGroup {
    id: group

    // The user has asked for something and not gone elsewhere since.
    property bool asked: false

    title: Words.text("Updates")

    UpdateModel {
        id: updates
        onAsked: group.asked = true
    }

    Item {
        width: parent.width
        height: visible ? banner.height + 24 : 0
        visible: updates.available.length > 0

        UpdateRow {
            id: banner
            objectName: "openUpdate"
            x: 16
            y: 16
            width: parent.width - 32
            enabled: updates.canCheck
            text: Words.text(updates.available)
            help: Words.text("Download and install the update inside the app")
            onClicked: updates.open()
        }
    }
    SettingRow {
        objectName: "updateMessage"
        width: parent.width
        title: Words.text(updates.message)
        note: Words.text(updates.lastChecked)

        Spinner {
            anchors.verticalCenter: parent?.verticalCenter
            visible: updates.busy
            label: Words.text("Already on it.")
        }
        Button {
            objectName: "checkForUpdates"
            text: Words.text("Check for Updates")
            enabled: updates.canCheck
            disabledReason: Words.text(updates.notNow)
            onClicked: updates.check()
        }
    }
    ToggleRow {
        objectName: "automaticUpdates"
        width: parent.width
        title: Words.text("Automatically check for updates")
        note: Words.text("Checks daily. Updates download and install inside the app, then it restarts. Your settings stay. No process data is sent.")
        turnedOn: updates.automatic
        separated: false
        onWanted: (on) => updates.automatic = on
    }
}
