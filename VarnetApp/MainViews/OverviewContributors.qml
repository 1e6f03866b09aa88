import QtQuick
import Varnet

// What keeps the machine busy: shares by kind of work, and the groups at the top.
Card {
    id: card

    required property OverviewModel model

    readonly property var notice: model.contributorsNotice
    readonly property bool ready: notice.title.length === 0
    readonly property int inner: width - 32
    readonly property int third: Math.round(inner * 0.34)
    readonly property int rightPart: 16 + third + 32

    implicitHeight: 188

    SectionHeading {
        id: heading
        x: 16
        y: 12
        // The link keeps 4 pixels of its own around its words.
        width: card.inner + 4
        title: Words.text("What’s keeping your Mac busy?")

        Button {
            visible: card.ready
            kind: Button.Link
            trailingIcon: "right"
            text: Words.text("Open All sources to see every app, project and process group")
            width: Math.max(0, Math.min(implicitWidth, heading.width - heading.titleWidth - 8))
            onClicked: card.model.openSources()
        }
    }

    StackedBarItem {
        x: 16
        y: 52
        width: card.third
        height: 16
        visible: card.ready
        values: card.model.shares
        colors: [Theme.emberFill, Theme.dev, Theme.faint]
        trackColor: Theme.track
    }
    Repeater {
        model: card.model.categories

        Item {
            id: legend

            required property int index
            required property string label
            required property string tone
            required property string figure

            x: 16
            y: 79 + 30 * index
            width: card.third
            height: 30
            visible: card.ready
            Accessible.role: Accessible.StaticText
            Accessible.name: name.text + " " + figure

            Separator {
                visible: legend.index > 0
                width: parent.width
            }
            Rectangle {
                y: 11
                width: 8
                height: 8
                radius: 2
                color: Theme[legend.tone]
            }
            Label {
                id: name
                x: 18
                y: 6
                text: Words.text(legend.label)
                font: Theme.bodyMedium
            }
            Figure {
                x: parent.width - width
                y: 6
                width: 64
                alignment: Figure.Right
                text: legend.figure
                color: Theme.text
            }
        }
    }

    CaptionText {
        x: card.rightPart
        y: 46
        visible: card.ready
        text: Words.text("Using the most CPU")
    }
    CaptionText {
        x: card.width - 16 - width
        y: 46
        visible: card.ready
        text: Words.text("CPU · 30s average")
    }
    Column {
        x: card.rightPart - 8
        y: 66
        width: card.width - 8 - x
        visible: card.ready

        Repeater {
            model: card.model.contributors

            ContributorRow {
                required property string key
                required property var model

                width: parent.width
                name: model.name
                subtitle: Words.text(model.subtitle)
                kind: model.kind
                tone: Theme[model.tone]
                figure: model.figure
                fraction: model.fraction
                barWidth: card.width >= 760 ? 96 : 56
                onClicked: card.model.inspectGroup(key)
            }
        }
    }

    EmptyState {
        y: 58
        width: card.width
        visible: !card.ready
        inCard: true
        iconName: card.notice.icon
        tone: Theme[card.notice.tone] ?? Theme.muted
        title: Words.text(card.notice.title)
        note: Words.text(card.notice.text)
    }
}
