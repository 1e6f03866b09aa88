pragma ComponentBehavior: Bound

import QtQuick
import Varnet

// The sections above the list of processes.
Column {
    id: sections

    required property DetailModel details
    property bool showFolder: false

    spacing: 12
    topPadding: 16
    bottomPadding: 4

    Rectangle {
        width: parent.width
        height: findingWords.y + findingWords.height + 14
        visible: sections.details.findingTitle.length > 0
        radius: Theme.radius
        color: Theme.cover(Theme.surface, Theme.tint(Theme.warn))

        Icon {
            x: 12
            y: 13
            name: sections.details.findingIcon
            color: Theme.tintText(Theme.warn)
        }
        StrongText {
            x: 40
            y: 11
            width: parent.width - x - 12
            text: Words.text(sections.details.findingTitle)
        }
        CaptionText {
            id: findingWords
            x: 40
            y: 31
            width: parent.width - x - 12
            text: Words.text(sections.details.findingText)
            color: Theme.mix(Theme.tintText(Theme.warn), Theme.muted, 0.6)
            wrapMode: Text.Wrap
        }
    }
    Row {
        width: parent.width
        spacing: 8

        DetailFigure {
            width: Math.floor((parent.width - 8) / 2)
            label: Words.text("CPU · Whole Mac")
            value: sections.details.cpu
            help: Words.text(sections.details.cpuHelp)
            share: sections.details.cpuShare
            tone: Theme[sections.details.barTone]
        }
        DetailFigure {
            width: Math.floor((parent.width - 8) / 2)
            label: Words.text("Memory")
            value: sections.details.memory
            help: Words.text(sections.details.memoryHelp)
            share: sections.details.memoryShare
            tone: Theme.memory
        }
    }
    CaptionText {
        width: parent.width
        visible: !sections.details.isService || sections.details.showProcesses
        text: Words.text(sections.details.cpuNote)
        wrapMode: Text.Wrap
    }
    Separator {
        width: parent.width
    }

    Column {
        width: parent.width
        spacing: 8
        visible: sections.details.isService

        StrongText {
            width: parent.width
            text: Words.text("Details")
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Repeater {
            model: sections.details.facts

            Item {
                id: fact

                required property string iconName
                required property string text
                required property bool isAgent

                width: sections.width
                height: words.height

                Icon {
                    y: 2
                    name: fact.iconName
                    color: fact.isAgent ? Theme.memory : fact.iconName === "globe" ? Theme.info : Theme.muted
                }
                Label {
                    id: words
                    x: 26
                    width: parent.width - x
                    text: Words.text(fact.text)
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
        Repeater {
            model: sections.details.addresses

            Item {
                id: address

                required property int port
                required property string shownAddress

                width: sections.width
                height: 36

                Button {
                    id: browse
                    objectName: "openInBrowser"
                    y: 4
                    iconName: "external"
                    text: Words.text("Open in browser")
                    onClicked: sections.details.openInBrowser(address.port)
                }
                Label {
                    x: browse.width + 18
                    y: browse.y + (browse.height - height) / 2
                    width: Math.max(0, parent.width - x)
                    text: address.shownAddress
                    font: Theme.bodyMedium
                }
            }
        }
    }

    Column {
        width: parent.width
        spacing: 4
        visible: sections.details.serversText.length > 0

        StrongText {
            width: parent.width
            text: Words.text("Running servers")
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Label {
            width: parent.width
            text: Words.text(sections.details.serversText)
            color: Theme.muted
            wrapMode: Text.Wrap
        }
        Repeater {
            model: sections.details.servers

            DetailServer {
                required property string key

                width: sections.width
                onOpened: sections.details.openServer(key)
                onStopRequested: sections.details.stopServer(key)
            }
        }
    }
    Button {
        objectName: "showApp"
        width: parent.width
        visible: sections.details.canShowApp
        iconName: "window"
        text: Words.text("Show app")
        onClicked: sections.details.showApp()
    }
    Separator {
        width: parent.width
        visible: sections.details.isService || sections.details.serversText.length > 0
    }

    Column {
        width: parent.width

        Disclosure {
            width: parent.width
            visible: sections.details.folder.length > 0
            text: Words.text("Show project folder and worktree")
            unfolded: sections.showFolder
            onClicked: sections.showFolder = !sections.showFolder
        }
        Item {
            width: parent.width
            height: place.height + 8
            visible: sections.showFolder && sections.details.folder.length > 0

            Column {
                id: place
                x: 22
                width: parent.width - x - 36

                CaptionText {
                    width: parent.width
                    text: sections.details.folder
                    color: Theme.text
                    wrapMode: Text.WrapAnywhere
                }
                CaptionText {
                    width: parent.width
                    text: Words.text(sections.details.worktree)
                    wrapMode: Text.WrapAnywhere
                }
            }
            IconButton {
                objectName: "revealFolder"
                x: parent.width - width
                iconName: "external"
                label: Words.text("Show in Finder")
                onClicked: sections.details.revealFolder()
            }
        }
        Disclosure {
            objectName: "technicalDetails"
            width: parent.width
            text: Words.text(sections.details.detailsTitle)
            unfolded: sections.details.showProcesses
            onClicked: sections.details.showProcesses = !sections.details.showProcesses
        }
        CaptionText {
            width: parent.width
            topPadding: 10
            visible: sections.details.showProcesses
            text: Words.text(sections.details.processesTitle)
        }
    }
}
