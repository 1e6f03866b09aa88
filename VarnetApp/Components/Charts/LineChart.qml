import QtQuick
import Varnet

// The line chart as every page shows it. `label` names it to assistive tools, which also hear the picked point.
LineChartItem {
    id: chart

    required property string label
    property string summary: ""

    font: Theme.caption
    lineColor: Theme.accent
    gridColor: Theme.hairline
    labelColor: Theme.muted
    ruleColor: Theme.faint
    groundColor: Theme.surface
    bubbleColor: Theme.raised
    bubbleLineColor: Theme.controlLine
    bubbleTextColor: Theme.text
    bandColor: Theme.good
    faintBandColor: Theme.faint

    Accessible.role: Accessible.Chart
    Accessible.name: chart.label
    Accessible.description: chart.currentText !== "" ? chart.currentText : chart.summary
    Accessible.focusable: true

    FocusRing {
        shown: chart.focusVisible
        cornerRadius: 4
    }
}
