import QtQuick
import Varnet

// A share of a whole. Above zero it is never shorter than it is high.
BarItem {
    id: bar

    required property double fraction
    property color tone: Theme.emberFill
    property int thickness: 3

    implicitHeight: thickness
    value: fraction
    color: tone
    trackColor: Theme.track
    animated: !Theme.reducedMotion
}
