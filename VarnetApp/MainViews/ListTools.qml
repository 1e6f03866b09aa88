import QtQuick
import QtQuick.Templates as T
import Varnet

// What narrows and orders a list: the search, the order, and the agent that started things.
Item {
    id: tools

    required property ActivityListModel model

    readonly property bool compact: width < 520
    readonly property int gap: compact ? 6 : 8

    // The keyboard wants to go on to the list.
    signal movedOn

    implicitHeight: 32

    function focusSearch(): void {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    SearchField {
        id: search

        objectName: "search"
        width: Math.max(96, Math.min(320, order.x - tools.gap))
        placeholderText: Words.text(tools.model.searchPrompt)
        clearLabel: Words.text("Clear search")
        text: Store.search
        onTextChanged: if (text !== Store.search) Store.search = text
        Keys.onDownPressed: tools.movedOn()
        Keys.onReturnPressed: tools.movedOn()
        Keys.onEnterPressed: tools.movedOn()

        // Typing has broken the binding.
        Connections {
            target: Store
            function onFilterChanged() { if (search.text !== Store.search) search.text = Store.search }
        }
    }
    Segmented {
        id: order

        objectName: "order"
        x: (agent.visible ? agent.x - tools.gap : tools.width) - width
        label: Words.text("Sort by")
        options: tools.model.sortTitles.map(title => Words.text(title))
        currentIndex: tools.model.sortIndex
        onChosen: (index) => tools.model.sortBy(index)
    }
    MenuButton {
        id: agent

        objectName: "agent"
        x: tools.width - width
        visible: tools.model.agents.length > 0
        label: Words.text("Agent")
        iconName: "agent"
        compact: tools.compact
        tinted: tools.model.agentIndex > 0
        text: Words.text(tools.model.agents[tools.model.agentIndex] ?? "")
        menu: Menu {
            id: menu

            Instantiator {
                model: tools.model.agents
                delegate: MenuRow {
                    required property int index
                    required property string modelData

                    text: Words.text(modelData)
                    checkable: true
                    checked: index === tools.model.agentIndex
                    onTriggered: tools.model.chooseAgent(index)
                }
                onObjectAdded: (index, object) => menu.insertItem(index, object)
                onObjectRemoved: (index, object) => menu.removeItem(object)
            }
        }
    }
}
