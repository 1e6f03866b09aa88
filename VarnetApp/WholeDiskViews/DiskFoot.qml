import QtQuick
import Varnet

// What else there is to say below the map: how the scan goes, what could not be read, and why sums differ.
Flow {
    id: foot

    required property WholeDiskModel model

    // Beside each other they stand apart by their own padding; below each other they do not.
    spacing: 0

    Row {
        height: 28
        spacing: 6
        rightPadding: 16
        visible: foot.model.status.length > 0

        Loader {
            anchors.verticalCenter: parent.verticalCenter
            active: foot.model.scanning
            visible: active
            sourceComponent: Spinner {
                width: 16
                height: 16
                label: Words.text(foot.model.status)
            }
        }
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: !foot.model.scanning
            size: 14
            name: foot.model.statusIsError ? "warning" : "stop"
            color: foot.model.statusIsError ? Theme.bad : Theme.muted
        }
        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            text: Words.text(foot.model.status)
            color: foot.model.statusIsError ? Theme.bad : Theme.muted
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            visible: foot.model.itemsChecked.length > 0
            text: Words.text(foot.model.itemsChecked)
        }
    }
    Row {
        height: 28
        rightPadding: 12
        visible: foot.model.unreadable.length > 0

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            size: 14
            name: "lock"
            color: Theme.muted
        }
        Button {
            id: about
            objectName: "aboutAccess"
            kind: Button.Link
            text: Words.text("Some folders couldn’t be read. About access.")
            onClicked: access.toggleAt(about, 32)
        }
    }
    Button {
        id: why
        objectName: "aboutSums"
        visible: !foot.model.scanning && (foot.model.hasTiles || foot.model.hasRows)
        kind: Button.Link
        text: Words.text("Why doesn’t the map add up to Used?")
        onClicked: sums.toggleAt(why, 32)
    }

    InfoPanel {
        id: access
        x: 0
        title: Words.text("About access")

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.muted
            text: Words.text("macOS protects things like Mail, Messages and other people’s files. We skip what we can’t read.")
        }
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: Words.text(foot.model.unreadable)
        }
        Button {
            objectName: "openAccess"
            text: Words.text("Open Full Disk Access")
            onClicked: {
                access.close();
                foot.model.openAccessSettings();
            }
        }
    }
    InfoPanel {
        id: sums
        x: 0
        title: Words.text("Why doesn’t the map add up to Used?")
        width: 360

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.muted
            text: Words.text("Hidden system data counts as Used but belongs to no file: journals, snapshots, space that is set aside.")
        }
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.muted
            text: Words.text("Shared space makes sizes differ too. Copies that share their blocks are measured one by one, although they take the space only once.")
        }
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.muted
            text: Words.text("External drives aren’t included. The scan only reads names and sizes; it doesn’t open or upload your files.")
        }
    }
}
