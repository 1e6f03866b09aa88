import QtQuick
import Varnet

// A share of a whole. Above zero it is never shorter than it is high.
RoundBox {
    id: bar

    required property double fraction
    property color tone: Theme.emberFill
    property int thickness: 3

    implicitHeight: thickness
    radius: height / 2
    color: Theme.track

    RoundBox {
        readonly property double share: Math.max(0, Math.min(1, bar.fraction))
        width: share > 0 ? Math.max(bar.height, Math.round(bar.width * share)) : 0
        height: bar.height
        radius: bar.radius
        color: bar.tone

        Behavior on width {
            NumberAnimation { duration: Theme.slideDuration; easing.type: Easing.OutCubic }
        }
    }
}
