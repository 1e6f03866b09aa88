import QtQuick
import Varnet

// How the capacity has changed over the months.
Card {
    id: card

    implicitHeight: 216

    HealthCurveModel { id: health }

    SectionHeading {
        x: 16
        y: 12
        width: parent.width - 32
        title: Words.text("Health")

        CaptionText {
            anchors.verticalCenter: parent.verticalCenter
            text: Words.text("One estimate a day")
        }
    }
    LineChart {
        objectName: "healthChart"
        x: 16
        y: 44
        width: parent.width - 27
        height: parent.height - 54
        visible: health.ready
        label: Words.text("Health")
        summary: Words.text(health.summary)
        lineColor: Theme.info
        points: health.points
        labels: health.labels
        gap: health.gap
        from: health.from
        to: health.to
        low: health.low
        gridLabels: health.gridLabels
        timeLabels: health.timeLabels.map(words => Words.text(words))
    }
    BatteryBareChart {
        x: 16
        y: 51
        width: parent.width - 32
        height: parent.height - 81
        visible: !health.ready
        ground: card.color
        words: Words.text("No estimate yet")
    }
}
