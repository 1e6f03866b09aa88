import QtQuick
import Varnet

// The flame's report as it stood when it was asked for: nothing in it moves while it is read.
Sheet {
    id: sheet

    required property RoastSheetModel model

    title: Words.text("Share report")
    sheetWidth: 560
    visible: Store.showRoast
    initialFocus: done
    onClosed: Store.showRoast = false

    Row {
        width: parent.width
        spacing: 20
        topPadding: 8
        bottomPadding: 8

        MascotItem {
            id: flame

            width: 128
            height: 128
            expression: sheet.model.expression
            animated: false
        }
        Column {
            width: parent.width - flame.width - parent.spacing
            anchors.verticalCenter: flame.verticalCenter
            spacing: 6

            TitleText {
                width: parent.width
                wrapMode: Text.WordWrap
                text: sheet.model.headline
            }
            Label {
                width: parent.width
                color: Theme.muted
                wrapMode: Text.WordWrap
                text: Words.text(sheet.model.explanation)
            }
        }
    }
    Repeater {
        model: sheet.model.observations

        CaptionText {
            required property string modelData

            width: parent?.width ?? 0
            wrapMode: Text.WordWrap
            text: "·  " + Words.text(modelData)
        }
    }

    foot: Button {
        id: done

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: Words.text("Done")
        onClicked: sheet.close()
    }
}
