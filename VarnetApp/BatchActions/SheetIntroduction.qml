import QtQuick
import Varnet

// The sentence above a sheet's list: what will happen, what is waited for, or what came of it.
Item {
    id: introduction

    required property string text
    property bool waiting: false
    property bool finished: false

    implicitHeight: words.height
    visible: text.length > 0

    Loader {
        y: Math.round((Theme.bodyLine - 20) / 2)
        width: 20
        height: 20
        active: introduction.waiting
        sourceComponent: Spinner { label: introduction.text }
    }
    Label {
        id: words
        x: introduction.waiting ? 30 : 0
        width: parent.width - x
        text: introduction.text
        font: introduction.finished ? Theme.strong : introduction.waiting ? Theme.bodyMedium : Theme.body
        color: introduction.finished || introduction.waiting ? Theme.text : Theme.muted
        wrapMode: Text.Wrap
        // What changes here is read out.
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
