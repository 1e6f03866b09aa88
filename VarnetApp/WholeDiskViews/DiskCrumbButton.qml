import QtQuick
import QtQuick.Templates as T
import Varnet

// A step of the way to a folder. The last one is where you are and leads nowhere.
T.AbstractButton {
    id: control

    property bool current: false
    property string iconName: ""
    property string size: ""
    property string help: ""

    readonly property int taken: (iconName.length > 0 ? 22 : 0) + (tail.visible ? Math.ceil(tail.implicitWidth) + 4 : 0)

    implicitWidth: Math.min(Math.ceil(words.implicitWidth), 200) + taken + leftPadding + rightPadding
    implicitHeight: 26
    leftPadding: 6
    rightPadding: 6
    hoverEnabled: !current
    focusPolicy: current ? Qt.NoFocus : Qt.StrongFocus

    contentItem: Item {
        Icon {
            id: picture
            anchors.verticalCenter: parent.verticalCenter
            visible: control.iconName.length > 0
            name: control.iconName
            color: control.hovered ? Theme.text : Theme.muted
        }
        Label {
            id: words
            x: picture.visible ? 22 : 0
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), parent.width - control.taken))
            elide: Text.ElideMiddle
            text: control.text
            font: control.current ? Theme.strong : Theme.bodyMedium
            color: control.current || control.hovered ? Theme.text : Theme.muted
        }
        Label {
            id: tail
            x: words.x + words.width + 4
            anchors.verticalCenter: parent.verticalCenter
            visible: control.size.length > 0
            text: "· " + control.size
            color: Theme.muted
        }
    }
    background: Rectangle {
        radius: 6
        color: control.current ? "transparent" : control.down ? Theme.press : control.hovered ? Theme.hover : "transparent"

        Behavior on color {
            enabled: !control.down
            ColorAnimation { duration: Theme.hoverDuration }
        }
        FocusRing {
            shown: control.visualFocus
            inside: true
            cornerRadius: 6
        }
    }
    HoverTip {
        text: control.help
        wanted: control.hovered || control.visualFocus
    }

    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Accessible.role: control.current ? Accessible.StaticText : Accessible.Button
    Accessible.name: control.size.length > 0 ? control.text + " " + control.size : control.text
    Accessible.description: control.help
    Accessible.onPressAction: if (!control.current) control.clicked()
}
