import QtQuick
import QtQuick.Templates as T
import Varnet

// A page that scrolls when it is taller than its window. What the keyboard reaches comes into view.
Flickable {
    id: page

    property int revealMargin: 16
    readonly property Item focused: Window.activeFocusItem

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: interactive
    onFocusedChanged: if (focused?.visualFocus === true || focused?.focusVisible === true) reveal(focused)

    function reveal(item: Item): void {
        let above = item;
        while (above && above !== contentItem)
            above = above.parent;
        if (!above)
            return;
        const top = item.mapToItem(contentItem, 0, 0).y - revealMargin;
        const bottom = top + item.height + 2 * revealMargin;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.max(0, Math.min(bottom - height, contentHeight - height));
    }
    function scrollBy(distance: real): void {
        contentY = Math.max(0, Math.min(contentY + distance, contentHeight - height));
    }

    Keys.onPressed: (event) => {
        const page = Math.max(40, height - 40);
        event.accepted = interactive;
        switch (event.key) {
        case Qt.Key_PageDown: scrollBy(page); break;
        case Qt.Key_PageUp: scrollBy(-page); break;
        case Qt.Key_Down: scrollBy(40); break;
        case Qt.Key_Up: scrollBy(-40); break;
        case Qt.Key_Home: scrollBy(-contentHeight); break;
        case Qt.Key_End: scrollBy(contentHeight); break;
        default: event.accepted = false;
        }
    }

    T.ScrollBar.vertical: ScrollThumb {}
}
