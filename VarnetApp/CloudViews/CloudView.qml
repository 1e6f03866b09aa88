import QtQuick
import Varnet

// The window of the optional account: signing in, how to back up, the account's devices, and the way back.
FocusScope {
    id: root

    implicitWidth: 600
    implicitHeight: groups.implicitHeight + 56
    focus: true

    CloudModel { id: cloud }

    Rectangle {
        anchors.fill: parent
        color: Theme.bg
    }
    EmptyState {
        objectName: "noService"
        anchors.centerIn: parent
        width: Math.min(480, root.width - 48)
        visible: !cloud.configured
        iconName: "lock"
        title: Words.text("Cloud is not configured in this build.")
        note: Words.text("Everything stays on this Mac. Nothing is sent, and nothing you see needs it.")
    }
    ScrollPage {
        objectName: "page"
        anchors.fill: parent
        visible: cloud.configured
        contentHeight: groups.implicitHeight + 56 + (toast.shown ? 56 : 0)

        Column {
            id: groups
            x: Math.max(24, Math.round((root.width - width) / 2))
            y: 28
            width: Math.min(640, root.width - 48)
            spacing: 24

            SettingsGroup {
                width: parent.width
                title: Words.text("Your account")

                SettingRow {
                    width: parent.width
                    visible: !cloud.signedIn
                    separated: false
                    title: cloud.signingIn ? Words.text("Waiting for your browser")
                                           : Words.text("Keep a copy of your history")
                    note: cloud.signingIn ? Words.text("Finish sign-in there. This window follows by itself.")
                                          : Words.text("Optional, and off until you choose otherwise. Monitoring never waits for it.")

                    Spinner {
                        anchors.verticalCenter: parent?.verticalCenter
                        visible: cloud.signingIn
                        label: Words.text("Waiting for your browser")
                    }
                    Button {
                        objectName: "cancelSignIn"
                        visible: cloud.signingIn
                        text: Words.text("Cancel")
                        onClicked: cloud.cancelSignIn()
                    }
                    Button {
                        objectName: "signIn"
                        visible: !cloud.signingIn
                        enabled: !cloud.busy
                        kind: Button.Primary
                        text: Words.text("Sign in")
                        trailingIcon: "external"
                        onClicked: cloud.signIn()
                    }
                }
                SettingRow {
                    objectName: "account"
                    width: parent.width
                    visible: cloud.signedIn
                    title: cloud.email
                    note: Words.text(cloud.lastBackup)

                    Spinner {
                        anchors.verticalCenter: parent?.verticalCenter
                        visible: cloud.busy
                        label: Words.text("Talking to the service")
                    }
                    Button {
                        objectName: "openAccount"
                        text: Words.text("Open account")
                        trailingIcon: "external"
                        onClicked: cloud.openAccount()
                    }
                }
                SettingRow {
                    width: parent.width
                    visible: cloud.signedIn
                    separated: false
                    title: Words.text("Disconnect this Mac")
                    note: Words.text("Local history and your cloud archive are kept.")

                    Button {
                        objectName: "disconnect"
                        kind: Button.Danger
                        text: Words.text("Disconnect")
                        onClicked: confirmDisconnect.open()
                    }
                }
            }
            SettingsGroup {
                width: parent.width
                visible: !cloud.signedIn
                title: Words.text("What signing in means")

                Column {
                    width: parent.width
                    padding: 16
                    spacing: 12

                    Repeater {
                        model: [
                            { icon: "cup", text: Words.text("By itself nothing. Connecting does not upload history; backing up is a choice of its own.") },
                            { icon: "book", text: Words.text("Your badges, records and battery history survive this Mac, if you choose a backup.") },
                            { icon: "lock", text: Words.text("Never sent: paths, command lines, working folders, project names, findings, process lists.") }
                        ]

                        CloudPoint {
                            required property var modelData

                            width: groups.width - 32
                            iconName: modelData.icon
                            tone: Theme.muted
                            text: modelData.text
                        }
                    }
                }
            }
            SettingsGroup {
                width: parent.width
                visible: cloud.signedIn
                title: Words.text("How to back up")

                Repeater {
                    model: cloud.modeTitles

                    CloudModeRow {
                        required property string modelData
                        required property int index

                        objectName: "mode " + index
                        width: groups.width
                        enabled: !cloud.busy
                        title: Words.text(modelData)
                        note: Words.text(cloud.modeNotes[index])
                        taken: cloud.mode === index
                        separated: index < cloud.modeTitles.length - 1
                        onWanted: if (index === 0) cloud.choose(0); else consent.ask(index)
                    }
                }
            }
            SettingsGroup {
                width: parent.width
                visible: cloud.hasDevices
                title: Words.text("Devices of this account")

                Repeater {
                    id: devices
                    model: cloud.devices

                    SettingRow {
                        id: device

                        required property string name
                        required property string mode
                        required property bool here
                        required property int index
                        // A role's name would hide the row's own.
                        required property var model

                        width: groups.width
                        title: name
                        note: Words.text(model.note)
                        separated: index < devices.count - 1
                        Accessible.name: title + " " + Words.text(mode)

                        Pill {
                            anchors.verticalCenter: parent?.verticalCenter
                            visible: device.here
                            kind: Pill.Good
                            text: Words.text("This Mac")
                        }
                        CaptionText {
                            anchors.verticalCenter: parent?.verticalCenter
                            text: Words.text(device.mode)
                        }
                    }
                }
            }
            SettingsGroup {
                width: parent.width
                visible: cloud.signedIn
                title: Words.text("Bring your history back")

                SettingRow {
                    width: parent.width
                    separated: false
                    title: Words.text("Restore the Hall of Flame")
                    note: Words.text("Takes badges, records and daily summaries from your backup. What is here now is copied first.")

                    Button {
                        objectName: "restore"
                        enabled: !cloud.busy
                        text: Words.text("Restore")
                        onClicked: confirmRestore.open()
                    }
                }
            }
        }
    }
    Toast {
        id: toast
        objectName: "message"
        x: Math.round((parent.width - width) / 2)
        y: parent.height - height - 24
        widest: Math.min(520, root.width - 48)
        shown: cloud.configured && cloud.message.length > 0
        text: Words.text(cloud.message)
        iconName: "info"
        tone: Theme.info
        closeLabel: Words.text("Close")
        onDismissed: cloud.dismissMessage()
    }
    ConsentSheet {
        id: consent
        onAccepted: (mode) => cloud.choose(mode)
    }
    Confirmation {
        id: confirmDisconnect
        objectName: "confirmDisconnect"
        title: Words.text("Disconnect this Mac?")
        question: Words.text("Local history and your cloud archive are kept.")
        confirm: Words.text("Disconnect")
        onConfirmed: cloud.disconnectAccount()
    }
    Confirmation {
        id: confirmRestore
        objectName: "confirmRestore"
        title: Words.text("Restore the Hall of Flame?")
        question: Words.text("Takes badges, records and daily summaries from your backup. What is here now is copied first.")
        confirm: Words.text("Restore")
        onConfirmed: cloud.restore()
    }
}
