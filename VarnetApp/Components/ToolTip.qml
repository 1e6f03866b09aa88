import QtQuick
import QtQuick.Templates as T
import Varnet

T.ToolTip {
    id: tip

    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: -height - 6
    width: Math.min(292, implicitWidth)
    implicitWidth: Math.ceil(words.implicitWidth) + leftPadding + rightPadding
    implicitHeight: words.height + topPadding + bottomPadding
    margins: 8
    padding: 10
    topPadding: 8
    bottomPadding: 8
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Item {
        Accessible.role: Accessible.ToolTip
        Accessible.name: tip.text

        CaptionText {
            id: words
            width: Math.min(292 - 20, implicitWidth)
            text: tip.text
            color: Theme.text
            wrapMode: Text.Wrap
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.raised
        border.color: Theme.controlLine
        border.width: 1
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.hoverDuration }
    }
}
