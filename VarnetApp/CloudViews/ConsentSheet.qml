import QtQuick
import Varnet

// What leaves this machine and what never does, to be agreed to before anything is sent. Another text needs
// another version of the consent.
Sheet {
    id: sheet

    // What is agreed to: an index among the ways of backing up.
    property int mode: 1
    property bool agreed: false

    readonly property bool shared: mode === 2

    signal accepted(int mode)

    function ask(mode: int): void {
        sheet.mode = mode;
        agreed = false;
        open();
    }

    objectName: "consent"
    sheetWidth: 520
    title: shared ? Words.text("Back up and share statistics?") : Words.text("Back up to your account?")
    initialFocus: tick

    Repeater {
        model: [
            { icon: "check", good: true, text: Words.text("Sent: your badges, records, daily summaries and battery history.") },
            { icon: "check", good: true, text: Words.text("Sent: minutes, CPU and memory of each application, by the name it is shown with.") },
            { icon: "close", good: false, text: Words.text("Never sent: paths, command lines, working folders, project names, findings, process lists.") },
            { icon: sheet.shared ? "people" : "lock", good: true, text: sheet.shared
                ? Words.text("The figures are also counted in shared statistics, without your name or email address.")
                : Words.text("Only you can read it, signed in to your account.") }
        ]

        CloudPoint {
            required property var modelData

            width: parent.width
            iconName: modelData.icon
            tone: modelData.good ? Theme.good : Theme.muted
            text: modelData.text
        }
    }
    CaptionText {
        width: parent.width
        text: Words.text("Available local history is included. You can switch the backup off at any time; your archive is then kept until you delete it in your account.")
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Item {
        width: parent.width
        height: Math.max(28, words.height + 6)

        Tick {
            id: tick
            objectName: "agree"
            x: -5
            label: words.text
            ticked: sheet.agreed
            onWanted: (ticked) => sheet.agreed = ticked
        }
        Label {
            id: words
            x: 28
            y: 4
            width: parent.width - x
            text: Words.text("I agree that this is sent to my account.")
            wrapMode: Text.Wrap
            Accessible.ignored: true

            TapHandler { onTapped: sheet.agreed = !sheet.agreed }
        }
    }
    foot: Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Button {
            objectName: "cancelConsent"
            text: Words.text("Cancel")
            onClicked: sheet.close()
        }
        Button {
            objectName: "acceptConsent"
            kind: Button.Primary
            enabled: sheet.agreed
            disabledReason: Words.text("Tick the box first.")
            text: Words.text("Back up")
            onClicked: {
                sheet.close();
                sheet.accepted(sheet.mode);
            }
        }
    }
}
