import QtQuick
import Varnet

// The machine's CPU over the last minutes.
Card {
    id: card

    implicitHeight: 176

    TimelineModel { id: timeline }

    TitleText {
        x: 16
        y: 12
        width: parent.width - 32
        text: Words.text("The last 15 minutes")
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    LineChart {
        x: 16
        y: 42
        width: parent.width - 28
        height: parent.height - 52
        visible: timeline.ready
        activeFocusOnTab: true
        label: Words.text("The last 15 minutes")
        summary: Words.text(timeline.summary)
        points: timeline.points
        labels: timeline.labels
        from: timeline.from
        to: timeline.to
        // A pass missed by sleep or by a failure is a hole, a slower pace is not.
        gap: 15
        gridLabels: ["0%", "50%", "100%"]
        timeLabels: [Words.text("15 min"), Words.text("10 min"), Words.text("5 min"), Words.text("Now")]
    }

    Item {
        x: 16
        y: 50
        width: parent.width - 65
        height: parent.height - 80
        visible: !timeline.ready

        Repeater {
            model: 3

            Separator {
                required property int index

                y: Math.round(parent.height * index / 2)
                width: parent.width
            }
        }
        Rectangle {
            anchors.centerIn: parent
            width: words.width + 16
            height: words.height
            color: card.color

            Label {
                id: words
                anchors.centerIn: parent
                text: Words.text("Building your CPU timeline…")
                color: Theme.muted
            }
        }
    }
}
