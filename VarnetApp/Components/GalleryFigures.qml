import QtQuick
import Varnet

GalleryBlock {
    caption: "Chart, bubble, bars, card hover"
    width: 240
    height: 372

    // The place of the line chart.
    Rectangle {
        x: 16
        y: 40
        width: 208
        height: 124
        radius: Theme.radius
        color: "transparent"
        border.color: Theme.hairline
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
