import QtQuick
import Varnet

// News in a line, or two where it takes them. It goes by itself after five seconds, but never from under the pointer or the focus.
// An alert that becomes visible is read out by screen readers.
Rectangle {
    id: toast

    required property string text
    required property string closeLabel
    property string iconName: "check"
    property color tone: Theme.good
    property bool shown: true
    property int widest: 560
    property alias lifetime: timer.interval

    // Time is up, or the user has read it; the owner lets go of it.
    signal dismissed

    width: Math.min(widest, Math.ceil(words.implicitWidth) + 42 + 40)
    height: Math.max(44, words.implicitHeight + 25)
    radius: Theme.radiusCard
    visible: shown
    color: Theme.raised
    border.color: Theme.controlLine
    border.width: 1
    onTextChanged: if (timer.running) timer.restart()

    Icon {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        size: 18
        name: toast.iconName
        color: toast.tone
    }
    Label {
        id: words
        x: 42
        width: Math.max(0, toast.width - x - 40)
        anchors.verticalCenter: parent.verticalCenter
        text: toast.text
        font: Theme.bodyMedium
        wrapMode: Text.Wrap
    }
    IconButton {
        id: close
        anchors.right: parent.right
        anchors.rightMargin: 11
        anchors.verticalCenter: parent.verticalCenter
        iconName: "close"
        iconSize: 16
        side: 24
        label: toast.closeLabel
        onClicked: toast.dismissed()
    }
    HoverHandler { id: pointer }
    Timer {
        id: timer
        interval: 5000
        running: toast.shown && !pointer.hovered && !close.activeFocus
        onTriggered: toast.dismissed()
    }

    Accessible.role: Accessible.AlertMessage
    Accessible.name: toast.text
}
