import QtQuick
import Varnet

// The store's one-line report of what came of an action; it is over when it has been shown.
Toast {
    text: Words.text(Store.actionMessage)
    closeLabel: Words.text("Close")
    shown: Store.actionMessage.length > 0
    iconName: Store.actionSucceeded ? "check" : "info"
    tone: Store.actionSucceeded ? Theme.good : Theme.info
    onDismissed: Store.actionMessage = ""
}
