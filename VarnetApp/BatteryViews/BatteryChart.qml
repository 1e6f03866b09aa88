import QtQuick
import Varnet

// The charge over the last day or week.
Card {
    id: card

    implicitHeight: 204

    ChargeCurveModel { id: curve }

    component Key: Row {
        id: key

        required property color tone
        required property string words

        spacing: 6
        anchors.verticalCenter: parent.verticalCenter

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 4
            radius: 2
            color: key.tone
        }
        CaptionText { text: key.words }
    }

    SectionHeading {
        id: heading
        x: 16
        y: 12
        width: parent.width - 32
        title: Words.text("Charge")

        Segmented {
            objectName: "chargeSpan"
            small: true
            label: Words.text("Time shown")
            options: [Words.text("24 hours"), Words.text("7 days")]
            currentIndex: curve.week ? 1 : 0
            onChosen: (index) => curve.week = index === 1
        }
    }
    Row {
        x: 16 + heading.titleWidth + 24
        y: 12
        height: 24
        spacing: 14
        visible: curve.ready

        Key {
            tone: Theme.good
            words: Words.text("Charging")
        }
        Key {
            tone: Theme.faint
            words: Words.text("Not measured")
        }
    }
    LineChart {
        objectName: "chargeChart"
        x: 16
        y: 43
        width: parent.width - 29
        height: parent.height - 54
        visible: curve.ready
        label: Words.text("Charge")
        summary: Words.text(curve.summary)
        lineColor: Theme.good
        points: curve.points
        labels: curve.labels
        starts: curve.starts
        bands: curve.charging
        faintBands: curve.missing
        from: curve.from
        to: curve.to
        gridLabels: ["0%", "50%", "100%"]
        timeLabels: curve.timeLabels.map(words => Words.text(words))
    }
    BatteryBareChart {
        x: 16
        y: 50
        width: parent.width - 62
        height: parent.height - 81
        visible: !curve.ready
        ground: card.color
        words: Words.text(curve.notice)
    }
}
