import QtQuick
import Varnet

// A badge that has just been earned. How long it stays is up to the store.
Toast {
    id: toast

    readonly property BadgeAnnouncement announcement: BadgeAnnouncement {}

    objectName: "badgeToast"
    text: Words.text(announcement.title) + " · " + Words.text(announcement.quip)
    closeLabel: Words.text("Close")
    shown: announcement.shown
    iconName: announcement.icon
    tone: Theme[announcement.tone]
    lifetime: 60000
    onDismissed: announcement.dismiss()
}
