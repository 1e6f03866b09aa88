import QtQuick
import Varnet

// The sessions before the one that is shown in full.
Card {
    id: card

    required property BatteryModel model

    readonly property bool tight: width < 700
    readonly property int measuredAt: Math.round(width * (tight ? 0.35 : 0.29))
    readonly property int chargesAt: Math.round(width * (tight ? 0.51 : 0.43))
    readonly property int appsAt: Math.round(width * (tight ? 0.68 : 0.58))

    implicitHeight: rows.y + rows.height + 12

    SectionHeading {
        x: 16
        y: 12
        // The link keeps 4 pixels of its own around its words.
        width: parent.width - 32 + 4
        title: Words.text("Earlier sessions")

        Button {
            objectName: "allSessions"
            visible: card.model.toggle.length > 0
            kind: Button.Link
            text: Words.text(card.model.toggle)
            onClicked: card.model.showAllSessions = !card.model.showAllSessions
        }
    }
    Column {
        id: rows
        y: 43
        width: parent.width

        Repeater {
            model: card.model.sessions

            Item {
                id: row

                required property int index
                required property string when
                required property string measured
                required property string charges
                required property string apps

                width: card.width
                height: 36
                Accessible.role: Accessible.ListItem
                Accessible.name: since.text + " " + length.text
                Accessible.description: fall.text + ", " + eaters.text

                Separator {
                    x: 16
                    width: parent.width - 32
                    visible: row.index > 0
                }
                Label {
                    id: since
                    x: 16
                    anchors.verticalCenter: parent.verticalCenter
                    width: card.measuredAt - 12 - x
                    text: Words.text(row.when)
                    font: Theme.bodyMedium
                }
                Label {
                    id: length
                    x: card.measuredAt
                    anchors.verticalCenter: parent.verticalCenter
                    width: card.chargesAt - 8 - x
                    text: Words.text(row.measured)
                    color: Theme.muted
                }
                Label {
                    id: fall
                    x: card.chargesAt
                    anchors.verticalCenter: parent.verticalCenter
                    width: card.appsAt - 8 - x
                    text: Words.text(row.charges)
                }
                Label {
                    id: eaters
                    x: card.appsAt
                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width - 16 - x
                    text: Words.text(row.apps)
                    color: Theme.muted
                }
            }
        }
    }
}
