pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Varnet

// Families of projects, and below an unfolded one each of its folders.
Card {
    id: card

    required property ProjectStorageModel model
    // Room for columns: the list stands alone.
    property bool wide: false
    // The row of the tile below the pointer.
    property string litKey: ""
    // As high as all of it.
    readonly property int fullHeight: list.y + Math.max(list.contentHeight, 140) + foot.height

    // The row below the pointer; empty: none.
    signal lit(string key)

    function focusSearch(): void { search.forceActiveFocus(Qt.ShortcutFocusReason) }

    SearchField {
        id: search
        objectName: "storageSearch"
        x: 12
        y: 12
        width: card.wide ? Math.min(320, parent.width - 24) : parent.width - 24
        placeholderText: Words.text("Search projects or worktrees")
        clearLabel: Words.text("Clear search")
        text: card.model.search
        onTextChanged: card.model.search = text
        Keys.onDownPressed: list.go(list.currentIndex)
        Keys.onReturnPressed: list.go(list.currentIndex)
    }
    StorageLegend {
        x: search.x + search.width + 24
        y: 17
        width: parent.width - x - 16
        visible: card.wide
        height: 22
        clip: true
    }
    ListView {
        id: list

        objectName: "storageList"
        y: 52
        width: parent.width
        height: Math.max(0, foot.y - y)
        clip: true
        reuseItems: true
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        currentIndex: 0
        model: card.model.rows

        Accessible.role: Accessible.List
        Accessible.name: Words.text("Projects")

        readonly property int page: Math.max(1, Math.floor(height / 48) - 1)

        function go(index: int): void {
            if (count === 0)
                return;
            const next = Math.max(0, Math.min(count - 1, index));
            currentIndex = next;
            positionViewAtIndex(next, ListView.Contain);
            itemAtIndex(next)?.forceActiveFocus(Qt.TabFocusReason);
        }

        Keys.onPressed: (event) => {
            event.accepted = true;
            switch (event.key) {
            case Qt.Key_Down: go(currentIndex + 1); break;
            case Qt.Key_Up: go(currentIndex - 1); break;
            case Qt.Key_Home: go(0); break;
            case Qt.Key_End: go(count - 1); break;
            case Qt.Key_PageDown: go(currentIndex + page); break;
            case Qt.Key_PageUp: go(currentIndex - page); break;
            default: event.accepted = false;
            }
        }

        T.ScrollBar.vertical: ScrollThumb {
            parent: card
            x: card.width - width
            y: list.y
            height: list.height
            visible: list.visible && size < 1
        }

        delegate: StorageListRow {
            id: row

            required property int index
            required property var model

            objectName: "storageRow " + model.title
            // A row that waits to be used again is nowhere, for screen readers too.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
            width: ListView.view.width
            wide: card.wide
            title: model.title
            subtitle: Words.text(model.subtitle)
            figure: model.figure
            review: Words.text(model.review)
            about: model.foldable ? Words.text(model.about) : model.about
            warns: model.warns
            member: model.member
            foldable: model.foldable
            unfolded: model.unfolded
            last: model.last
            shares: model.shares
            lit: card.litKey.length > 0 && card.litKey === model.key
            reachable: ListView.isCurrentItem
            onActiveFocusChanged: if (activeFocus) list.currentIndex = index
            onHoveredChanged: card.lit(hovered ? model.key : "")
            onClicked: card.model.openRow(model.key)
            onFoldWanted: (unfolded) => card.model.setUnfolded(model.key, unfolded)
        }
    }
    EmptyState {
        x: 16
        y: Math.round(list.y + Math.max(16, (list.height - height) * 0.3))
        width: parent.width - 32
        visible: card.model.noMatch
        inCard: true
        iconName: "search"
        title: Words.text("No matching projects.")
        note: Words.text("Try another search or show all projects.")

        Item {
            width: 1
            height: 8
        }
        Button {
            objectName: "showAllProjects"
            anchors.horizontalCenter: parent.horizontalCenter
            kind: Button.Link
            text: Words.text("Show all projects")
            onClicked: {
                search.clear();
                search.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }
    Item {
        id: foot

        y: parent.height - height
        width: parent.width
        height: 40

        Separator {
            x: 1
            width: parent.width - 2
        }
        CaptionText {
            x: 15
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 30
            text: Words.text("Combined size · Expand to see each folder")
        }
    }
}
