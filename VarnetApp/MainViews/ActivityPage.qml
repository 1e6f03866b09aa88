import QtQuick
import Varnet

// A page with a list: its head, the tools, the rows, and the inspector beside or over them.
FocusScope {
    id: page

    required property ActivityListModel model
    // Height of the words of a row.
    required property int band
    // Rows are higher where their pills find no room beside the words.
    property bool growsForPills: false
    // The window has only room for little padding.
    required property bool narrow

    readonly property int padding: narrow ? 16 : 24
    readonly property int contentTop: head.y + head.height + 16
    readonly property bool beside: width >= 792
    readonly property bool covered: detail.open && !beside
    readonly property int listWidth: detail.open && beside ? width - padding - 16 - inspector.width
                                                           : width - 2 * padding

    focus: true

    PageHead {
        id: head

        x: page.padding
        y: page.narrow ? 16 : 20
        width: page.width - 2 * page.padding
        headline: Words.text(page.model.headline)
        line: Words.text(page.model.line)
        note: Words.text(page.model.note)
    }
    DetailModel { id: detail }

    ListTools {
        id: tools

        x: page.padding
        y: page.contentTop
        width: page.listWidth
        visible: !page.covered
        model: page.model
        onMovedOn: list.enter()
    }
    StopSelectionControls {
        id: controls

        x: page.padding
        y: tools.y + tools.height + 8
        width: page.listWidth
        visible: page.model.hasRows && !page.covered
        selection: page.model.selection
    }
    ListHeads {
        id: heads

        x: page.padding
        y: controls.y + controls.height + 4
        width: page.listWidth
        visible: page.model.hasRows && !page.covered
        model: page.model
    }
    ActivityList {
        id: list

        objectName: "list"
        x: page.padding
        y: heads.y + heads.height
        width: page.listWidth
        height: page.height - y
        // The thumb stands in the gap beside the rows.
        thumbInset: detail.open && page.beside ? 16 : page.padding
        bottomMargin: page.padding
        visible: page.model.hasRows && !page.covered
        focus: true
        activity: page.model
        band: page.band
        growsForPills: page.growsForPills
    }
    EmptyState {
        x: page.padding + Math.round((page.listWidth - width) / 2)
        y: Math.round(tools.y + tools.height + (page.height - tools.y - tools.height - height) * 0.24)
        width: Math.min(480, page.listWidth)
        visible: !page.model.hasRows && !page.covered
        iconName: page.model.noticeIcon
        title: Words.text(page.model.noticeTitle)
        note: Words.text(page.model.noticeText)
        tone: page.model.noticeIsError ? Theme.bad : Theme.muted
    }

    DetailInspector {
        id: inspector

        property int shift: detail.open ? 0 : 8

        x: page.width - width + shift
        y: page.contentTop
        width: page.beside ? 336 : page.width
        height: page.height - y
        visible: detail.open
        model: detail
        covering: !page.beside
        padding: page.beside ? 20 : page.padding
        onClosed: page.closeDetail()
        onVisibleChanged: if (visible && covering) takeFocus()

        Behavior on shift {
            NumberAnimation { duration: Theme.sheetDuration; easing.type: Easing.OutCubic }
        }
    }

    function closeDetail(): void {
        detail.close();
        list.enter();
    }

    Keys.onEscapePressed: (event) => {
        event.accepted = detail.open;
        if (detail.open)
            closeDetail();
    }

    Connections {
        target: Store
        function onSearchFocusRequestChanged() { tools.focusSearch() }
        // Another page is another list.
        function onPageChanged() { list.toTop() }
    }
}
