import QtQuick
import Varnet

// What the user's rights do not reach, where no switch could change that.
Sheet {
    id: sheet

    title: Words.text("What your account can’t read")
    initialFocus: done

    Label {
        width: parent.width
        wrapMode: Text.Wrap
        text: Words.text("Varnet reads the disk with the rights of your account and asks for no others. There is no switch to turn on here.")
    }
    Label {
        width: parent.width
        wrapMode: Text.Wrap
        color: Theme.muted
        text: Words.text("Closed to it are the home folders of other people, the administrator’s own folder, and what some services keep to themselves, such as databases, mail and containers.")
    }
    Label {
        width: parent.width
        wrapMode: Text.Wrap
        color: Theme.muted
        text: Words.text("Their sizes are missing from the map; whatever holds them is marked “Not fully mapped”.")
    }
    foot: Button {
        id: done
        objectName: "accessDone"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        kind: Button.Primary
        text: Words.text("Done")
        onClicked: sheet.close()
    }
}
