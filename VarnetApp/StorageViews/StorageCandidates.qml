pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Varnet

// The folders offered for review, in an inset: at most six lines, the rest is scrolled to.
Rectangle {
    id: inset

    required property var model
    property bool tickable: false
    property bool locked: false

    signal wanted(string key, bool ticked)

    implicitHeight: Math.min(list.contentHeight, 6 * 48) + 2
    radius: Theme.radius
    color: Theme.surface
    border.color: Theme.hairline
    border.width: 1

    ListView {
        id: list

        anchors.fill: parent
        anchors.margins: 1
        clip: interactive
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: interactive && !inset.tickable
        model: inset.model
        Accessible.role: Accessible.List
        Accessible.name: Words.text("To review")

        T.ScrollBar.vertical: ScrollThumb {}

        delegate: StorageCandidateLine {
            required property int index
            required property var model

            width: ListView.view.width
            last: index === ListView.view.count - 1
            tickable: inset.tickable
            locked: inset.locked
            name: model.name
            note: Words.text(model.note)
            figure: model.figure
            tone: Theme[model.tone]
            ticked: model.ticked
            onWanted: (ticked) => inset.wanted(model.key, ticked)
            onActiveFocusChanged: if (activeFocus) list.positionViewAtIndex(index, ListView.Contain)
        }
    }
}
