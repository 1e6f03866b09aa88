import QtQuick
import Varnet

// The medals in rows: one tab stop, arrow keys walk them.
FocusScope {
    id: grid

    required property var badges

    // Four and five leave no badge alone in a row when all are shown.
    readonly property int columns: Math.max(2, Math.min(5, Math.floor((width + 16) / 160)))
    readonly property int rows: Math.ceil(repeater.count / columns)
    property int current: 0
    // The list may have become shorter.
    readonly property int reachable: Math.min(current, repeater.count - 1)

    implicitHeight: rows > 0 ? rows * 144 - 12 : 0

    function go(index: int): void {
        if (index >= 0 && index < repeater.count)
            repeater.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
    }

    Keys.onLeftPressed: go(reachable - 1)
    Keys.onRightPressed: go(reachable + 1)
    Keys.onUpPressed: go(reachable - columns)
    Keys.onDownPressed: go(reachable + columns)
    Keys.onEscapePressed: (event) => {
        event.accepted = bubble.opened;
        bubble.dismiss();
    }

    Accessible.role: Accessible.List
    Accessible.name: Words.text("Badges")

    Repeater {
        id: repeater
        model: grid.badges

        BadgeCard {
            id: card

            required property int index
            readonly property int column: index % grid.columns
            readonly property int start: Math.round(column * (grid.width + 16) / grid.columns)

            x: start
            y: Math.floor(index / grid.columns) * 144
            width: Math.round((column + 1) * (grid.width + 16) / grid.columns) - 16 - start
            height: 132
            focusPolicy: index === grid.reachable ? Qt.StrongFocus : Qt.ClickFocus
            onActiveFocusChanged: if (activeFocus) grid.current = index
            told: bubble.opened && bubble.card === card
            onTellRequested: bubble.tell(card)
            onUntellRequested: bubble.untell(card)
            onClicked: bubble.press(card)
        }
    }
    BadgeFinePrint { id: bubble }
}
