import QtQuick
import Varnet

// Everything about the selected group or server. What stops it stands in a foot that does not scroll.
FocusScope {
    id: inspector

    required property DetailModel model
    // It lies over the list instead of beside it.
    required property bool covering
    property int padding: 20

    signal closed

    function takeFocus(): void {
        head.takeFocus();
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }
    Separator {
        width: parent.width
    }
    Separator {
        height: parent.height
        visible: !inspector.covering
    }
    // What lies below is not reached through it.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
    }

    Accessible.role: Accessible.Pane
    Accessible.name: Words.text("Details") + " " + model.title

    DetailHead {
        id: head

        x: inspector.padding
        y: 16
        width: inspector.width - inspector.padding - 12
        visible: !inspector.model.gone
        covering: inspector.covering
        model: inspector.model
        onClosed: inspector.closed()
    }
    DetailBody {
        y: head.y + head.height
        width: inspector.width
        height: inspector.height - y - foot.height
        visible: !inspector.model.gone
        padding: inspector.padding
        details: inspector.model
    }
    Item {
        id: foot

        y: inspector.height - height
        width: inspector.width
        height: visible ? 64 : 0
        visible: !inspector.model.gone && inspector.model.stopTitle.length > 0

        Separator {
            width: parent.width
        }
        Button {
            objectName: "detailStop"
            x: inspector.padding
            y: 14
            width: parent.width - 2 * inspector.padding
            height: 36
            kind: Button.Danger
            iconName: "stop"
            text: Words.text(inspector.model.stopTitle)
            enabled: inspector.model.stoppable
            help: Words.text(inspector.model.stopHelp)
            disabledReason: Words.text(inspector.model.stopHelp)
            onClicked: inspector.model.stop()
        }
    }

    IconButton {
        x: inspector.width - 12 - width
        y: 14
        visible: inspector.model.gone
        iconName: inspector.covering ? "left" : "close"
        label: Words.text("Close detail")
        help: Words.text("Close detail (Escape)")
        onClicked: inspector.closed()
    }
    EmptyState {
        x: inspector.padding
        y: Math.round((inspector.height - height) * 0.36)
        width: inspector.width - 2 * inspector.padding
        visible: inspector.model.gone
        iconName: "hourglass"
        title: Words.text("This process has moved on")
        note: Words.text("It may have exited since you opened the detail.")
    }
}
