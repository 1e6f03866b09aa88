import QtQuick
import Varnet

// What stands where there is nothing to show: before the first scan, while it starts, and where a folder or a
// search holds nothing.
Item {
    id: notice

    required property WholeDiskModel model
    property bool inCard: false

    Column {
        x: Math.round((parent.width - width) / 2)
        y: Math.round((parent.height - height) * 0.38)
        width: Math.min(notice.inCard ? 360 : 440, parent.width - 32)
        spacing: 20

        EmptyState {
            width: parent.width
            visible: notice.model.noticeTitle.length > 0 && !notice.model.noticeIsBusy
            inCard: notice.inCard
            iconName: notice.model.noticeIcon
            tone: notice.model.noticeIsError ? Theme.bad : Theme.muted
            title: Words.text(notice.model.noticeTitle)
            note: Words.text(notice.model.noticeText)
        }
        Column {
            width: parent.width
            visible: notice.model.noticeIsBusy
            spacing: 4

            Loader {
                anchors.horizontalCenter: parent.horizontalCenter
                active: notice.model.noticeIsBusy
                sourceComponent: Spinner { label: Words.text(notice.model.noticeTitle) }
            }
            Item {
                width: 1
                height: 4
            }
            StrongText {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: Words.text(notice.model.noticeTitle)
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            CaptionText {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: Words.text(notice.model.noticeText)
            }
        }
        Button {
            objectName: "diskStart"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: notice.model.noticeCanScan
            kind: Button.Primary
            size: Button.Large
            iconName: notice.model.started ? "refresh" : "search"
            text: notice.model.started ? Words.text("Rescan") : Words.text("Scan whole disk")
            onClicked: notice.model.scanOrStop()
        }
    }
}
