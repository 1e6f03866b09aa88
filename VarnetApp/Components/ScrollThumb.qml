import QtQuick
import QtQuick.Templates as T
import Varnet

// Shown while there is something to scroll.
T.ScrollBar {
    id: bar

    property string preview: ""

    readonly property bool wide: hovered || pressed || preview === "hover"

    implicitWidth: 16
    implicitHeight: 16
    padding: 4
    minimumSize: 0.08
    hoverEnabled: true
    visible: policy === T.ScrollBar.AlwaysOn || (policy === T.ScrollBar.AsNeeded && size < 1)

    contentItem: Item {
        Rectangle {
            anchors.right: parent.right
            width: bar.wide ? 8 : 4
            height: parent.height
            radius: width / 2
            color: Theme.fade(Theme.faint, bar.wide ? 0.8 : 0.5)
        }
    }
}
