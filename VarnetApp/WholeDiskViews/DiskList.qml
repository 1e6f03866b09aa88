pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Varnet

// What is in the folder, as rows that can be searched.
Card {
    id: card

    required property WholeDiskModel model
    // The row or tile below the pointer.
    property string litKey: ""
    // What stands below the rows.
    readonly property int below: (more.visible ? 44 : 8) + (emptyChoice.visible ? emptyChoice.height : 0)
    // Rows that find room beside the button for more.
    readonly property int room: Math.floor((height - list.y - 44 - (emptyChoice.visible ? emptyChoice.height : 0)) / 49)
    // As high as all of it.
    readonly property int fullHeight: list.y + list.count * 49 + below

    signal lit(string key)
    signal unlit(string key)

    function enter(): void { list.go(list.currentIndex) }
    function focusSearch(): void { search.forceActiveFocus(Qt.ShortcutFocusReason) }

    SearchField {
        id: search
        objectName: "diskSearch"
        x: 12
        y: 12
        width: parent.width - 24
        placeholderText: Words.text("Search")
        clearLabel: Words.text("Clear search")
        text: card.model.search
        onTextChanged: card.model.search = text

        // Typing has broken the binding.
        Connections {
            target: card.model
            function onChanged() { if (search.text !== card.model.search) search.text = card.model.search }
        }
        Keys.onDownPressed: card.enter()
    }
    ListView {
        id: list

        objectName: "diskList"
        y: 52
        width: parent.width
        height: Math.max(0, parent.height - y - card.below)
        clip: true
        reuseItems: true
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        model: card.model.rows

        Accessible.role: Accessible.List
        Accessible.name: Words.text("Folder contents")

        readonly property int page: Math.max(1, Math.floor(height / 49) - 1)

        function go(index: int): void {
            if (count === 0)
                return;
            const next = Math.max(0, Math.min(count - 1, index));
            currentIndex = next;
            positionViewAtIndex(next, ListView.Contain);
            itemAtIndex(next)?.forceActiveFocus(Qt.TabFocusReason);
        }

        // The rows of another folder are on their way, and the keyboard is to go on with the first.
        property bool waits: false

        function open(key: string, byKeys: bool): void {
            card.model.open(key);
            if (byKeys)
                leave();
        }
        function leave(): void { waits = count === 0 }

        onCountChanged: {
            if (count === 0 || !waits)
                return;
            waits = false;
            Qt.callLater(go, 0);
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
            case Qt.Key_Backspace: card.model.goUp(); leave(); break;
            default: event.accepted = false;
            }
        }

        T.ScrollBar.vertical: ScrollThumb {
            parent: card
            x: card.width - width
            y: list.y
            height: list.height
            visible: size < 1
        }

        delegate: DiskRowButton {
            id: row

            required property int index
            required property var model

            objectName: "row " + model.title
            // A row that waits to be used again is nowhere, for screen readers too.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
            width: ListView.view.width
            title: model.title
            subtitle: model.subtitle
            partial: model.partial
            figure: model.figure
            share: model.share
            tone: Theme[model.tone ?? "faint"]
            iconName: model.icon
            lit: card.litKey === model.key
            reachable: ListView.isCurrentItem
            onActiveFocusChanged: if (activeFocus) list.currentIndex = index
            onHoveredChanged: hovered ? card.lit(model.key) : card.unlit(model.key)
            onClicked: list.open(model.key, visualFocus)
        }
    }
    Button {
        id: more

        objectName: "showMore"
        x: Math.round((parent.width - width) / 2)
        y: list.y + list.height + 6
        visible: card.model.more.length > 0
        kind: Button.Ghost
        text: Words.text(card.model.more)
        onClicked: card.model.showMore()
    }
    EmptyState {
        x: 16
        y: Math.round(list.y + Math.max(16, (list.height - height) * 0.3))
        width: parent.width - 32
        visible: card.model.asList && !card.model.hasRows && card.model.noticeTitle.length > 0
                 && !card.model.noticeIsBusy
        inCard: true
        iconName: card.model.noticeIcon
        tone: card.model.noticeIsError ? Theme.bad : Theme.muted
        title: Words.text(card.model.noticeTitle)
        note: Words.text(card.model.noticeText)
    }
    Item {
        id: emptyChoice

        y: parent.height - height
        width: parent.width
        height: 44
        visible: card.model.hasEmpty

        Separator {
            x: 1
            width: parent.width - 2
        }
        CaptionText {
            x: 16
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 16 - 12 - 40 - 12
            maximumLineCount: 2
            wrapMode: Text.Wrap
            text: Words.text("Show empty or unreadable items")
        }
        Toggle {
            objectName: "showEmpty"
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            label: Words.text("Show empty or unreadable items")
            turnedOn: card.model.showEmpty
            onWanted: (on) => card.model.showEmpty = on
        }
    }
}
