import QtQuick
import Varnet

// The heads of a list's columns; the sorted column of figures stands first.
Item {
    id: heads

    required property ActivityListModel model

    implicitHeight: 24

    ColumnHead {
        x: 40
        width: implicitWidth
        rightAligned: false
        text: Words.text("Name")
        sorted: !heads.model.figuresSorted
        onClicked: heads.model.sortBy(2)
    }
    ColumnHead {
        objectName: "primaryHead"
        x: heads.width - 116 - width
        text: Words.text(heads.model.primaryHead)
        sorted: heads.model.figuresSorted
        onClicked: heads.model.sortByPrimary()
    }
    ColumnHead {
        x: heads.width - 36 - width
        text: Words.text(heads.model.secondaryHead)
        onClicked: heads.model.sortBySecondary()
    }
    Separator {
        y: parent.height - 1
        width: parent.width
    }
}
