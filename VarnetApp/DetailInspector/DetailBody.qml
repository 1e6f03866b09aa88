import QtQuick
import Varnet

// The scrolling part: the sections, then the processes line by line. Only the lines in sight exist.
ScrollPage {
    id: body

    required property DetailModel details
    required property int padding

    readonly property int lineHeight: 58
    // How far the processes are scrolled past.
    readonly property double passed: Math.max(0, contentY - sections.height)

    objectName: "detailBody"
    clip: true
    contentHeight: sections.height + processes.count * lineHeight + 16
    onPassedChanged: processes.follow()

    DetailSections {
        id: sections

        x: body.padding
        width: body.width - 2 * body.padding
        details: body.details
    }
    ListView {
        id: processes

        function follow(): void {
            contentY = body.passed;
        }

        x: body.padding
        y: sections.height + body.passed
        width: body.width - 2 * body.padding
        height: Math.max(0, Math.min(body.height, count * body.lineHeight - body.passed))
        clip: true
        interactive: false
        reuseItems: true
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        model: body.details.processes
        onCountChanged: Qt.callLater(follow)
        Accessible.role: Accessible.List
        Accessible.name: Words.text(body.details.processesTitle)

        delegate: DetailProcess {
            required property var model

            width: ListView.view.width
            height: 58
            name: model.name
            pidText: Words.text(model.pidText)
            depth: model.depth
            cpu: model.cpu
            executable: Words.text(model.executable)
            workingDirectory: Words.text(model.workingDirectory)
        }
    }
}
