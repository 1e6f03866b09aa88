import QtQuick
import QtQuick.Templates as T
import Varnet

// The bubble under a badge: what it says, and what earns it. It never takes the keyboard.
T.Popup {
    id: bubble

    property BadgeCard card: null
    // The user pressed for it, so that it stays when the pointer leaves.
    property bool pinned: false

    function tell(wanted: BadgeCard): void {
        if (opened && card === wanted)
            return;
        card = wanted;
        pinned = false;
        const top = wanted.mapToItem(null, 0, 0).y;
        const fitsBelow = top + wanted.height + 4 + height + 8 <= wanted.Window.height;
        y = fitsBelow ? wanted.height + 4 : -4 - height;
        open();
    }
    function untell(left: BadgeCard): void {
        if (card === left && !pinned)
            close();
    }
    function press(wanted: BadgeCard): void {
        if (opened && card === wanted && pinned) {
            dismiss();
            return;
        }
        tell(wanted);
        pinned = true;
    }
    function dismiss(): void {
        pinned = false;
        close();
    }

    parent: card
    // Under the middle of the badge, but not beyond the grid.
    x: card ? Math.round(Math.max(-card.x, Math.min((card.width - width) / 2,
                                                    (card.parent?.width ?? 0) - card.x - width))) : 0
    width: 280
    height: implicitHeight
    implicitHeight: column.implicitHeight + 24
    margins: 8
    focus: false
    closePolicy: pinned ? T.Popup.CloseOnPressOutsideParent : T.Popup.NoAutoClose
    onClosed: pinned = false

    contentItem: Item {
        Accessible.role: Accessible.ToolTip
        Accessible.name: bubble.card ? bubble.card.text + " " + Words.text(bubble.card.words) : ""

        Column {
            id: column
            x: 14
            y: 12
            width: bubble.width - 28
            spacing: 4

            Row {
                spacing: 10

                StrongText {
                    width: Math.min(Math.ceil(implicitWidth), column.width - tier.width - 10)
                    text: bubble.card?.text ?? ""
                }
                RoundBox {
                    id: tier
                    width: Math.ceil(name.implicitWidth) + 16
                    height: 18
                    anchors.verticalCenter: parent.verticalCenter
                    radius: 9
                    color: Theme.tint(bubble.card ? Theme[bubble.card.ink] : Theme.ember)

                    CaptionText {
                        id: name
                        anchors.centerIn: parent
                        text: bubble.card ? Words.text(bubble.card.tier) : ""
                        color: Theme.tintText(bubble.card ? Theme[bubble.card.ink] : Theme.ember)
                    }
                }
            }
            Label {
                width: parent.width
                text: bubble.card ? Words.text(bubble.card.words) : ""
                wrapMode: Text.Wrap
            }
            CaptionText {
                width: parent.width
                visible: text.length > 0
                text: bubble.card ? Words.text(bubble.card.finePrint) : ""
                wrapMode: Text.Wrap
            }
        }
    }
    background: Rectangle {
        radius: Theme.radiusCard
        color: Theme.raised
        border.color: Theme.controlLine
        border.width: 1
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hoverDuration }
    }
}
