import QtQuick
import Varnet

// The flame, what it has to say, and how busy and how warm the machine is.
Card {
    id: hero
    objectName: "hero"

    required property string headline
    required property string explanation
    required property list<string> observations
    required property string expression
    required property string cpu
    required property double cpuFraction
    required property string thermal
    required property color thermalTone
    required property string updated
    property bool compact: false

    readonly property int mascotSide: compact ? 84 : 128
    // Longer words in another language widen it; readings that tick never do.
    readonly property int blockWidth: Math.max(compact ? 112 : 104, Math.min(160, Math.ceil(
        Math.max(cpuLine.implicitWidth, thermalLine.implicitWidth + 12))))
    readonly property int blockLeft: width - blockWidth - (compact ? 16 : 20)

    implicitHeight: compact ? 116 : 184

    GlowItem {
        anchors.fill: parent
        anchors.margins: 1
        center: Qt.point(mascot.x + mascot.width / 2 - 1, mascot.y + mascot.height / 2 - 1)
    }
    MascotItem {
        id: mascot
        x: 16
        y: Math.round((hero.height - height) / 2)
        width: hero.mascotSide
        height: hero.mascotSide
        expression: hero.expression
        animated: !Theme.reducedMotion
    }

    Column {
        x: hero.compact ? 116 : 156
        y: Math.round((hero.height - height) / 2)
        width: hero.blockLeft - 32 - x

        // Lines of headline and explanation; the observations take what is left of six.
        readonly property int told: headline.lineCount + explanation.lineCount

        HeadlineText {
            id: headline
            width: parent.width
            words: hero.headline
            compact: hero.compact
            maximumLineCount: hero.compact ? 2 : 3
        }
        Item {
            width: 1
            height: hero.compact ? 2 : 4
        }
        Label {
            id: explanation
            width: parent.width
            text: hero.explanation
            color: Theme.muted
            wrapMode: Text.Wrap
            maximumLineCount: hero.compact ? 2 : 3
        }
        Item {
            width: 1
            height: 10
            visible: !hero.compact && facts.count > 0
        }
        Repeater {
            id: facts
            model: hero.compact ? [] : hero.observations.slice(0, Math.max(0, Math.min(3, 6 - parent.told)))

            Item {
                required property string modelData

                width: parent.width
                height: 19

                Rectangle {
                    y: 8
                    width: 4
                    height: 4
                    radius: 2
                    color: Theme.accent
                }
                CaptionText {
                    x: 12
                    y: 2
                    width: parent.width - x
                    text: Words.text(parent.modelData)
                }
            }
        }
    }

    Separator {
        x: hero.blockLeft - 16
        y: 24
        height: hero.height - 48
    }

    CaptionText {
        id: cpuLine
        x: hero.blockLeft
        y: hero.compact ? 7 : 36
        width: hero.blockWidth
        text: Words.text("Whole Mac CPU")
    }
    Figure {
        x: hero.blockLeft
        y: hero.compact ? 25 : 56
        width: hero.blockWidth
        text: hero.cpu
        font: Theme.display
        color: Theme.text
        Accessible.role: Accessible.StaticText
        Accessible.name: Words.text("Whole Mac CPU") + " " + hero.cpu
    }
    ValueBar {
        x: hero.blockLeft
        y: hero.compact ? 61 : 94
        width: hero.blockWidth
        thickness: 6
        fraction: hero.cpuFraction
        tone: Theme.accent
    }
    Rectangle {
        x: hero.blockLeft
        y: thermalLine.y + 5
        width: 6
        height: 6
        radius: 3
        color: hero.thermalTone
    }
    CaptionText {
        id: thermalLine
        x: hero.blockLeft + 12
        y: hero.compact ? 75 : 112
        width: hero.width - x - 4
        text: hero.thermal
        color: Theme.text
    }
    CaptionText {
        x: hero.blockLeft
        y: hero.compact ? 92 : 131
        width: hero.width - x - 4
        text: hero.updated
    }
}
