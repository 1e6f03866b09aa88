import QtQuick
import Varnet

// Something worth a look, in one line of the panel.
PanelRow {
    id: row

    required property string key
    required property string title
    required property string iconName
    required property string tone

    readonly property color tint: Theme[tone]

    text: Words.text(title)
    leading: Rectangle {
        width: 24
        height: 24
        radius: 6
        color: Theme.tint(row.tint)

        Icon {
            anchors.centerIn: parent
            name: row.iconName
            color: row.tint
        }
    }
    trailing: Icon {
        anchors.verticalCenter: parent?.verticalCenter
        name: "right"
        color: row.hovered ? Theme.text : Theme.muted
    }
}
