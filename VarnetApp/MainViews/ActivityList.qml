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
    // What lies beyond the edges would be made in the background, while rows come and go.
    cacheBuffer: 0
    model: activity.rows

    Accessible.role: Accessible.List
    Accessible.name: Words.text(activity.headline)

    // Puts the keyboard on the current row.
    function enter(): void {
        go(currentIndex);
    }
    function go(index: int): void {
        if (count === 0)
            return;
        const next = Math.max(0, Math.min(count - 1, index));
        positionViewAtIndex(next, ListView.Contain);
        // The row that gets the keyboard becomes the current one, once the last one has let go of it.
        itemAtIndex(next)?.forceActiveFocus(Qt.TabFocusReason);
    }
    function toTop(): void {
        currentIndex = count > 0 ? 0 : -1;
        positionViewAtBeginning();
    }

    // A change of order is told without saying who went where: the keyboard goes along with its row.
    property string currentKey: ""

    function keepCurrent(): void {
        const now = activity.indexOf(currentKey);
        if (now < 0 || now === currentIndex)
            return;
        const reason = currentItem?.activeFocus ? currentItem.focusReason : -1;
        currentIndex = now;
        if (reason >= 0)
            currentItem?.forceActiveFocus(reason);
    }

    Connections {
        target: list.activity.rows
        function onLayoutChanged() { list.keepCurrent() }
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
        // A row that waits to be used again is nowhere, for screen readers too.
        ListView.onPooled: visible = false
        ListView.onReused: visible = true
        width: ListView.view.width
        band: list.band
        pillsBelow: list.tight && list.growsForPills
        reachable: ListView.isCurrentItem
        title: model.title
        subtitle: Words.text(model.subtitle)
        primary: model.primary
        secondary: model.secondary
        fraction: model.fraction
        // These follow the appearance, also while the row waits and has nothing to show.
        barTone: Theme[model.barTone ?? "emberFill"]
        tileTone: model.tileTone?.length > 0 ? Theme[model.tileTone]
                                             : Theme.tileTone(Theme.Application, title, Theme.dark)
        tileLetter: model.tileLetter
        tileIcon: model.tileIcon
        ports: Words.text(model.ports)
        stateText: Words.text(model.stateText)
        worktree: model.worktree
        agents: model.agents
        pillsHidden: list.tight && !list.growsForPills
        ticked: model.ticked
        open: model.open
        tickable: model.stoppable
        stoppable: model.stoppable
        tickLabel: Words.text(model.tickLabel)
        stopLabel: stoppable ? stopHelp : stopReason
        stopHelp: Words.text(model.stopHelp)
        stopReason: Words.text(model.stopReason)
        openLabel: Words.text(model.openLabel)
        onTakenInHand: {
            // On its way out of the list the keyboard may still pass through it.
            if (model.key === undefined)
                return;
            list.currentIndex = index;
            list.currentKey = model.key;
        }
        onOpened: list.activity.open(model.key)
        onTickWanted: list.activity.selection.toggle(model.key)
        onStopRequested: list.activity.stop(model.key)
    }
}
