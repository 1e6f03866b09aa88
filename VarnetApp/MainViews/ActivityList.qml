pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Varnet

// The rows. They change places at once, and what is hovered, focused or scrolled to stays as it is.
ListView {
    id: list

    required property ActivityListModel activity
    required property int band
    property int thumbInset: 12

    // Where there is no room beside the words, pills take a line of their own, or give way.
    property bool growsForPills: false
    readonly property bool tight: width < 680

    objectName: "list"
    clip: true
    topMargin: 2
    reuseItems: true
    boundsBehavior: Flickable.StopAtBounds
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    cacheBuffer: 200
    model: activity.rows

    Accessible.role: Accessible.List
    Accessible.name: Words.text(activity.headline)

    // Puts the keyboard on the current row.
    function enter(): void {
        if (count === 0)
            return;
        if (currentIndex < 0)
            currentIndex = 0;
        positionViewAtIndex(currentIndex, ListView.Contain);
        currentItem?.forceActiveFocus(Qt.TabFocusReason);
    }
    function go(index: int): void {
        currentIndex = Math.max(0, Math.min(count - 1, index));
        enter();
    }
    function toTop(): void {
        currentIndex = count > 0 ? 0 : -1;
        positionViewAtBeginning();
    }

    readonly property int rowsShown: Math.max(1, Math.floor(height / band) - 1)

    Keys.onDownPressed: go(currentIndex + 1)
    Keys.onUpPressed: go(currentIndex - 1)
    Keys.onPressed: (event) => {
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Home: go(0); break;
        case Qt.Key_End: go(count - 1); break;
        case Qt.Key_PageDown: go(currentIndex + rowsShown); break;
        case Qt.Key_PageUp: go(currentIndex - rowsShown); break;
        default: event.accepted = false;
        }
    }

    T.ScrollBar.vertical: ScrollThumb {
        parent: list.parent
        x: list.x + list.width + list.thumbInset - width
        y: list.y
        height: list.height
        visible: list.visible && size < 1
    }

    delegate: GroupRowView {
        id: row

        required property int index
        required property var model

        objectName: model.key
        width: ListView.view.width
        band: list.band
        pillsBelow: list.tight && list.growsForPills
        reachable: ListView.isCurrentItem || activeFocus
        title: model.title
        subtitle: Words.text(model.subtitle)
        primary: model.primary
        secondary: model.secondary
        fraction: model.fraction
        barTone: Theme[model.barTone]
        tileTone: model.tileTone.length > 0 ? Theme[model.tileTone]
                                            : Theme.tileTone(Theme.Application, title, Theme.dark)
        tileLetter: model.tileLetter
        tileIcon: model.tileIcon
        ports: Words.text(model.ports)
        stateText: Words.text(model.stateText)
        worktree: model.worktree
        // The list may still be measured when its rows have gone.
        agents: list.tight && !list.growsForPills ? "" : model.agents ?? ""
        ticked: model.ticked
        open: model.open
        tickable: model.stoppable
        stoppable: model.stoppable
        tickLabel: Words.text(model.tickLabel)
        stopLabel: stoppable ? stopHelp : stopReason
        stopHelp: Words.text(model.stopHelp)
        stopReason: Words.text(model.stopReason)
        openLabel: Words.text(model.openLabel)
        onActiveFocusChanged: if (activeFocus) list.currentIndex = index
        onPressed: list.currentIndex = index
        onOpened: list.activity.open(model.key)
        onTickWanted: list.activity.selection.toggle(model.key)
        onStopRequested: list.activity.stop(model.key)
    }
}
