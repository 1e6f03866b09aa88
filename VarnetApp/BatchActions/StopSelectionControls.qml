import QtQuick
import Varnet

// What is ticked in a list: all of it, how much, and what can be done with it.
Rectangle {
    id: controls

    required property ListSelection selection
    // Only the box for everything.
    property bool selectAllOnly: selection.count === 0

    implicitHeight: 36
    radius: Theme.radius
    color: selectAllOnly ? "transparent" : Theme.cover(Theme.bg, Theme.tint(Theme.accent))

    Tick {
        id: box
        objectName: "selectAll"
        x: 5
        anchors.verticalCenter: parent.verticalCenter
        label: Words.text("Select all")
        help: Words.text("Select all stoppable items in this filtered list. Projects include their running servers.")
        disabledReason: Words.text("Select all stoppable items")
        enabled: controls.selection.available
        ticked: controls.selection.all
        partial: controls.selection.partial
        onWanted: controls.selection.toggleAll()
    }
    Label {
        id: words
        x: 40
        anchors.verticalCenter: parent.verticalCenter
        text: Words.text("Select all")
        font: Theme.bodyMedium
        color: !controls.selection.available ? Theme.faint
             : controls.selectAllOnly ? Theme.muted : Theme.text

        TapHandler {
            enabled: controls.selection.available
            onTapped: controls.selection.toggleAll()
        }
    }
    Label {
        x: words.x + words.width + 16
        anchors.verticalCenter: parent.verticalCenter
        // The button says how many, too: better nothing than half a word.
        visible: !controls.selectAllOnly && x + implicitWidth + 8 <= clear.x
        text: Words.text(controls.selection.countText)
        color: Theme.muted
    }
    Button {
        id: clear
        objectName: "clearSelection"
        x: stop.x - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        visible: !controls.selectAllOnly
        kind: Button.Ghost
        size: Button.Small
        text: Words.text("Clear")
        help: Words.text("Clear the selection")
        onClicked: controls.selection.clear()
    }
    Button {
        id: stop
        objectName: "stopSelected"
        x: parent.width - 6 - width
        anchors.verticalCenter: parent.verticalCenter
        visible: !controls.selectAllOnly
        kind: Button.Danger
        size: Button.Small
        text: Words.text(controls.selection.stopText)
        onClicked: controls.selection.stop()
    }
}
