import QtQuick
import Varnet

// What deserves a look: the first findings, all of them on request.
Card {
    id: card

    required property OverviewModel model

    readonly property var notice: model.attentionNotice
    readonly property bool quiet: notice.title.length > 0

    implicitHeight: Math.max(176, 44 + rows.implicitHeight + 8)

    Row {
        x: 16
        y: 12
        spacing: 4

        TitleText {
            text: Words.text("Needs attention")
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        IconButton {
            id: info
            objectName: "findingRules"
            y: -2
            iconName: "info"
            iconSize: 16
            side: 24
            label: Words.text("What appears in Needs attention?")
            onClicked: rules.toggleAt(info, height + 4)
        }
    }
    FindingRules {
        id: rules
        x: 0
    }
    Button {
        objectName: "allFindings"
        x: card.width - 12 - width
        y: 10
        visible: text.length > 0
        kind: Button.Link
        text: Words.text(card.model.toggle)
        onClicked: card.model.showAllFindings = !card.model.showAllFindings
    }

    Column {
        id: rows
        x: 8
        y: 44
        width: card.width - 16
        spacing: 4
        Accessible.role: Accessible.List
        Accessible.name: Words.text("Needs attention")

        Repeater {
            model: card.model.findings

            FindingRow {
                required property var model

                width: parent.width
                overview: card.model
                title: Words.text(model.title)
                explanation: Words.text(model.explanation)
                iconName: model.icon
                tone: Theme[model.tone]
            }
        }
    }
    EmptyState {
        y: 56
        width: card.width
        visible: card.quiet
        inCard: true
        captionNote: true
        iconName: card.notice.icon
        tone: Theme[card.notice.tone] ?? Theme.muted
        title: Words.text(card.notice.title)
        note: Words.text(card.notice.text)
    }
}
