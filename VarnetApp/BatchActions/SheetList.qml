pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Varnet

// What a sheet is about, in an inset: at most nine lines, the rest is scrolled to.
Rectangle {
    id: inset

    required property var model
    // Lines begin with a tile, as in the lists, instead of an icon.
    property bool tiles: false

    readonly property int rowHeight: tiles ? 44 : 40

    implicitHeight: Math.min(list.contentHeight, 9 * rowHeight) + 2
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
        activeFocusOnTab: interactive
        model: inset.model
        Accessible.role: Accessible.List

        T.ScrollBar.vertical: ScrollThumb {}

        delegate: SheetLine {
            required property int index
            required property var model

            width: ListView.view.width
            rowHeight: inset.rowHeight
            last: index === ListView.view.count - 1
            tiles: inset.tiles
            name: model.name
            note: Words.text(model.note)
            figure: Words.text(model.figure)
            figure2: model.figure2
            outcome: Words.text(model.outcome)
            detail: Words.text(model.detail)
            tone: model.tone
            iconName: model.iconName
            tileTone: model.tileTone
            tileLetter: model.tileLetter
        }
    }
}
