import QtQuick
import Varnet

// The badges: those earned or all, and the fine print that goes for every one.
Column {
    id: section

    required property HallModel model

    // The choice stands beside the words as long as both fit.
    readonly property bool stacked: title.titleWidth + 12 + note.implicitWidth + 16 + choice.width > width

    spacing: 0

    Item {
        width: parent.width
        height: section.stacked ? 24 + 4 + note.height : 32

        SectionHeading {
            id: title
            y: section.stacked ? 0 : 4
            width: titleWidth
            title: Words.text("Badges")
        }
        Label {
            id: note
            x: section.stacked ? 0 : title.titleWidth + 12
            y: section.stacked ? 28 : 7
            width: section.stacked ? parent.width : Math.ceil(implicitWidth)
            text: Words.text("Real moments earn these. Hover or click for the fine print.")
            color: Theme.muted
            wrapMode: Text.Wrap
        }
        Segmented {
            id: choice
            objectName: "badgeFilter"
            anchors.right: parent.right
            y: section.stacked ? -4 : 0
            label: Words.text("Badges")
            options: [Words.text("Earned"), Words.text("All badges")]
            currentIndex: section.model.filter
            onChosen: (index) => section.model.filter = index
        }
    }
    CaptionText {
        width: parent.width
        text: Words.text(section.model.filterLine)
        wrapMode: Text.Wrap
    }
    Item {
        width: 1
        height: 14
    }
    BadgeGrid {
        width: parent.width
        visible: !empty.visible
        badges: section.model.badges
    }
    Card {
        id: empty
        width: parent.width
        height: state.height + 64
        visible: section.model.noneEarned && section.model.filter === 0

        Column {
            id: state
            y: 32
            width: parent.width
            spacing: 16

            EmptyState {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(480, parent.width - 32)
                inCard: true
                iconName: "medal"
                title: Words.text("Your first one is coming.")
                note: Words.text("Switch to All badges to see what you can collect.")
            }
            Button {
                objectName: "showBadges"
                anchors.horizontalCenter: parent.horizontalCenter
                text: Words.text("Show badges")
                onClicked: section.model.filter = 1
            }
        }
    }
    Item {
        width: 1
        height: 14
    }
    CaptionText {
        width: parent.width
        text: Words.text("Trash badges count measured folders moved, not guaranteed disk space freed. Ground control requires a supported fan sensor. Nothing closes or gets deleted to chase a badge.")
        wrapMode: Text.Wrap
    }
}
