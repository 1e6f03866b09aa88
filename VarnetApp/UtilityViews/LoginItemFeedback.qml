import QtQuick
import Varnet

// What the desktop made of the wish to start at login: trouble, or an approval that it wants first.
Item {
    id: feedback

    required property string error
    required property bool needsApproval

    signal openRequested

    visible: error.length > 0 || needsApproval
    height: visible ? box.height + 12 : 0

    Rectangle {
        id: box
        x: 16
        width: parent.width - 32
        height: Math.max(40, words.implicitHeight + 20, open.visible ? open.height + 12 : 0)
        radius: Theme.radius
        color: Theme.tint(Theme.warn)

        Icon {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            name: "warning"
            color: Theme.warn
        }
        CaptionText {
            id: words
            x: 36
            width: Math.max(0, (open.visible ? open.x - 12 : parent.width - 12) - x)
            anchors.verticalCenter: parent.verticalCenter
            text: feedback.error.length > 0 ? feedback.error : Words.text("Waiting for your approval.")
            color: Theme.tintText(Theme.warn)
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Button {
            id: open
            objectName: "openLoginItems"
            x: parent.width - 6 - width
            anchors.verticalCenter: parent.verticalCenter
            visible: feedback.needsApproval
            size: Button.Small
            text: Words.text("Open Login Items")
            onClicked: feedback.openRequested()
        }
    }
    Separator {
        x: 16
        y: parent.height - 1
        width: parent.width - 32
    }
}
