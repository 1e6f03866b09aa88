import QtQuick
import Varnet

// Settings that belong together: a heading over one card of rows.
Column {
    id: group

    required property string title
    default property alias rows: column.data

    spacing: 8

    SectionHeading {
        width: parent.width
        title: group.title
    }
    Card {
        width: parent.width
        height: column.implicitHeight

        Column {
            id: column
            width: parent.width
        }
    }
}
