import QtQuick
import Varnet

// Something is under way. With reduced motion nothing turns: three dots fill, one a second.
SpinnerFrame {
    id: spinner

    required property string label

    implicitWidth: 20
    implicitHeight: 20
    dots: Theme.reducedMotion
    color: Theme.accent
    track: Theme.track

    NumberAnimation on turn {
        from: 0
        to: 1
        duration: 900
        loops: Animation.Infinite
        running: spinner.visible && !Theme.reducedMotion
    }
    Timer {
        interval: 1000
        repeat: true
        triggeredOnStart: true
        running: spinner.visible && Theme.reducedMotion
        onTriggered: spinner.filled = spinner.filled % 3 + 1
    }

    Accessible.role: Accessible.Indicator
    Accessible.name: spinner.label
}
