import QtQuick
import Varnet

// The window in which a user writes to the makers.
FocusScope {
    id: root

    implicitWidth: 520
    implicitHeight: 560
    focus: true

    FeedbackModel {
        id: feedback
        objectName: "feedback"
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.bg
    }
    Column {
        id: form

        readonly property int room: root.width - 48

        x: 24
        y: 24
        width: room
        spacing: 12

        Label {
            width: parent.width
            text: Words.text("What is broken, missing, or unexpectedly good? Only what you write here is sent, with the versions of the app and of the system.")
            color: Theme.muted
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Segmented {
            objectName: "kind"
            label: Words.text("Kind of feedback")
            options: feedback.kinds.map(kind => Words.text(kind))
            currentIndex: feedback.kind
            enabled: !feedback.sending
            onChosen: (index) => feedback.kind = index
        }
        FormField {
            objectName: "title"
            width: parent.width
            label: Words.text("Title")
            text: feedback.title
            maximumLength: feedback.longestTitle
            enabled: !feedback.sending
            focus: true
            onEdited: (text) => feedback.title = text
        }
        FormField {
            objectName: "body"
            width: parent.width
            lines: true
            height: Math.max(86, root.height - form.y - y - 12 - email.height - 16 - foot.height - 24)
            label: Words.text("Tell us more")
            text: feedback.body
            maximumLength: feedback.longestBody
            enabled: !feedback.sending
            onEdited: (text) => feedback.body = text
        }
        FormField {
            id: email
            objectName: "email"
            width: parent.width
            label: Words.text("Email, if you want an answer")
            text: feedback.email
            maximumLength: 254
            enabled: !feedback.sending
            onEdited: (text) => feedback.email = text
        }
    }
    Item {
        id: foot
        x: 24
        y: root.height - 24 - height
        width: form.room
        height: Math.max(send.height, words.visible ? words.height : 0)

        Icon {
            id: mark
            visible: words.visible
            anchors.verticalCenter: parent.verticalCenter
            name: feedback.succeeded ? "check" : "info"
            color: feedback.succeeded ? Theme.good : Theme.warn
        }
        Label {
            id: words
            objectName: "message"
            x: 24
            width: Math.max(0, send.x - 12 - x)
            visible: text.length > 0
            anchors.verticalCenter: parent.verticalCenter
            text: Words.text(feedback.message)
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Spinner {
            x: send.x - width - 12
            anchors.verticalCenter: parent.verticalCenter
            visible: feedback.sending
            label: Words.text("Sending…")
        }
        Button {
            id: send
            objectName: "send"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            kind: Button.Primary
            text: feedback.sending ? Words.text("Sending…") : Words.text("Send feedback")
            enabled: feedback.canSend
            disabledReason: Words.text(feedback.missing)
            onClicked: feedback.send()
        }
    }
}
