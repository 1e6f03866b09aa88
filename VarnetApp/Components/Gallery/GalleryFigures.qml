import QtQuick
import Varnet

GalleryBlock {
    caption: "Chart, bubble, bars, card hover"
    width: 240
    height: 372

    // A quarter of an hour of somebody's machine, in steps of ten seconds.
    readonly property var load: [31, 27, 30, 26, 29, 27, 31, 28, 27, 30, 26, 24, 28, 27, 30, 29, 33, 38, 46, 57, 52,
        43, 37, 40, 34, 37, 32, 35, 30, 27, 29, 24, 26, 21, 24, 19, 22, 20, 23, 21, 24, 19, 21, 18, 15, 17, 16, 19,
        27, 35, 33, 38, 42, 47, 44, 49, 58, 63, 60, 67, 66, 61, 56, 58, 52, 54, 49, 46, 50, 52, 49, 55, 53, 50, 56,
        51, 53, 48, 52, 45]

    LineChart {
        x: 16
        y: 36
        width: 208
        height: 136
        label: "CPU"
        points: parent.load.map((value, i) => Qt.point(-790 + 10 * i, value))
        labels: parent.load.map(value => value + "% · 14:24")
        from: -790
        to: 0
        low: 0
        high: 100
        gridLabels: ["0%", "50%", "100%"]
        timeLabels: ["15 min", "10 min", "5 min", "Now"]
        Component.onCompleted: currentIndex = 44
    }
    Column {
        x: 16
        y: 187
        width: 208
        spacing: 9

        ValueBar { width: 208; thickness: 6; fraction: 0.46; tone: Theme.accent }
        ValueBar { width: 208; thickness: 4; fraction: 0.3; tone: Theme.dev }
        ValueBar { width: 208; thickness: 3; fraction: 0.62; tone: Theme.memory }
    }
    MetricCard {
        x: 16
        y: 240
        width: 208
        iconName: "memory"
        label: "Process memory"
        figure: "21.6 GB"
        note: "17.9 of 32 GB RAM"
        fraction: 0.56
        infoLabel: "About process memory"
        preview: "hover"
    }
    Row {
        x: 16
        y: 334
        spacing: 8

        Tile { side: 22; tone: Theme.info; letter: "M" }
        Tile { side: 22; tone: Theme.dev; iconName: "projects" }
        Tile { side: 28; tone: Theme.ember; iconName: "servers" }
    }
}
