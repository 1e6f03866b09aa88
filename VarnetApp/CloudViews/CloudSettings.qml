import QtQuick
import Varnet

// The settings' lines that lead to the account and to the makers.
SettingsGroup {
    title: Words.text("Cloud and feedback")

    CloudModel { id: cloud }

    SettingRow {
        objectName: "cloud"
        width: parent.width
        title: Words.text("Cloud backup")
        note: Words.text(cloud.state)

        Button {
            objectName: "openCloud"
            text: Words.text("Open")
            Accessible.name: text + " " + Words.text("Cloud backup")
            onClicked: cloud.openCloud()
        }
    }
    SettingRow {
        width: parent.width
        title: Words.text("Send feedback")
        note: Words.text("Straight to the people who make this. No measurements go along.")
        separated: false

        Button {
            objectName: "openFeedback"
            text: Words.text("Send feedback")
            onClicked: cloud.openFeedback()
        }
    }
}
