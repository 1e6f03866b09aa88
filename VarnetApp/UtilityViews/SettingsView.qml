import QtQuick
import QtQuick.Templates as T
import Varnet

// The settings' window.
FocusScope {
    id: root

    implicitWidth: 640
    implicitHeight: groups.implicitHeight + 56
    focus: true

    SettingsModel { id: settings }

    Rectangle {
        anchors.fill: parent
        color: Theme.bg
    }

    Flickable {
        id: page

        readonly property Item current: root.Window.activeFocusItem

        // Brings what the keyboard has reached into view.
        function reveal(item: Item): void {
            const top = item.mapToItem(groups, 0, 0).y + groups.y;
            contentY = Math.max(0, Math.min(Math.max(contentY, top + item.height + 28 - height), top - 28));
        }
        function holds(item: Item): bool {
            for (let one = item; one; one = one.parent)
                if (one === groups)
                    return true;
            return false;
        }

        // Brings the answer to a question into view, also while the window still finds its size.
        function revealUpdates(): void {
            if (updates.asked)
                contentY = Math.max(0, Math.min(updates.y + groups.y - 28, contentHeight - height));
        }

        objectName: "page"
        anchors.fill: parent
        onHeightChanged: revealUpdates()
        onContentHeightChanged: revealUpdates()
        onMovementStarted: updates.asked = false
        contentHeight: groups.implicitHeight + 56
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollThumb {}
        onCurrentChanged: if (current && holds(current)) reveal(current)

        Column {
            id: groups
            x: Math.max(24, Math.round((root.width - width) / 2))
            y: 28
            width: Math.min(720, root.width - (root.width < 600 ? 48 : 64))
            spacing: 24

            SettingsGroup {
                width: parent.width
                title: Words.text("Make yourself at home")

                SettingRow {
                    width: parent.width
                    title: Words.text("Language")
                    note: Words.text("App text changes immediately. macOS menus update after restarting the app.")

                    Segmented {
                        objectName: "language"
                        label: Words.text("Language")
                        options: settings.languages
                        currentIndex: settings.language
                        onChosen: (index) => settings.chooseLanguage(index)
                    }
                }
                SettingRow {
                    width: parent.width
                    title: Words.text("Appearance")

                    Segmented {
                        objectName: "appearance"
                        label: Words.text("Appearance")
                        options: settings.appearances.map(Words.text)
                        currentIndex: settings.appearance
                        onChosen: (index) => settings.chooseAppearance(index)
                    }
                }
                ToggleRow {
                    objectName: "login"
                    width: parent.width
                    title: Words.text("Launch at login")
                    turnedOn: settings.login
                    separated: !feedback.visible
                    onWanted: (on) => Store.setLogin(on)
                }
                LoginItemFeedback {
                    id: feedback
                    objectName: "loginFeedback"
                    width: parent.width
                    error: Words.text(Store.loginError)
                    needsApproval: Store.loginNeedsApproval
                    onOpenRequested: Store.openLoginSettings()
                }
                ToggleRow {
                    objectName: "menuCPU"
                    width: parent.width
                    title: Words.text("Show whole Mac CPU in menu bar")
                    turnedOn: Store.showMenuCPU
                    onWanted: (on) => Store.showMenuCPU = on
                }
                ToggleRow {
                    objectName: "notifications"
                    width: parent.width
                    title: Words.text("Notify me about sustained issues")
                    note: Words.text("High CPU, thermal pressure and fast fans. Silent, at most once per incident every 30 minutes.")
                    turnedOn: Store.notifications
                    separated: false
                    onWanted: (on) => Store.setNotifications(on)
                }
            }

            SettingsGroup {
                width: parent.width
                title: Words.text("The flame in your Dock")

                ToggleRow {
                    objectName: "dynamic"
                    width: parent.width
                    title: Words.text("React to my Mac’s activity")
                    note: Words.text("Faces change after sustained readings. No constant animation, sound or Dock bouncing.")
                    turnedOn: DockFlame.dynamic
                    onWanted: (on) => DockFlame.dynamic = on
                }
                ToggleRow {
                    objectName: "keepInDock"
                    width: parent.width
                    title: Words.text("Keep in Dock when the window closes")
                    turnedOn: DockFlame.keepInDock
                    separated: false
                    onWanted: (on) => DockFlame.keepInDock = on
                }
            }

            SettingsGroup {
                width: parent.width
                title: Words.text("Sensors & access")

                SettingRow {
                    objectName: "fans"
                    width: parent.width
                    title: Words.text("Fan readings")
                    note: Words.text("Fan support varies by Mac. Speeds are read only; missing readings stay unavailable.")

                    Accessible.name: title + " " + fans.text

                    RoundBox {
                        anchors.verticalCenter: parent?.verticalCenter
                        width: 6
                        height: 6
                        radius: 3
                        color: settings.fansMeasured ? Theme.good : Theme.faint
                    }
                    Figure {
                        id: fans
                        anchors.verticalCenter: parent?.verticalCenter
                        text: Words.text(settings.fans)
                        font: Theme.body
                        color: Theme.muted
                    }
                }
                SettingRow {
                    width: parent.width
                    title: Words.text("Grant access to a project folder")
                    separated: false

                    Button {
                        objectName: "allowAccess"
                        text: Words.text("Allow access")
                        Accessible.description: Words.text("Grant access to a project folder")
                        onClicked: chooser.active = true
                    }
                }
            }

            SettingsGroup {
                width: parent.width
                title: Words.text("Your data and privacy")

                Item {
                    width: parent.width
                    height: Math.max(48, statement.implicitHeight + 22)

                    Icon {
                        x: 16
                        y: 13
                        name: "lock"
                        color: Theme.good
                    }
                    Label {
                        id: statement
                        x: 46
                        y: 11
                        width: parent.width - x - 16
                        text: Words.text("Seven days of process connections and actions, stored on this Mac. Document, chat and code contents are never collected.")
                        wrapMode: Text.Wrap
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                    Separator {
                        x: 16
                        y: parent.height - 1
                        width: parent.width - 32
                    }
                }
                SettingRow {
                    id: recent

                    property bool expanded: false
                    readonly property bool open: expanded && settings.hasActions

                    objectName: "recentActions"
                    width: parent.width
                    title: Words.text("Recent actions")
                    note: recent.open ? "" : Words.text(settings.lastAction)
                    pressable: settings.hasActions
                    pressIcon: recent.open ? "down" : "right"
                    separated: !recent.open
                    onClicked: recent.expanded = !recent.expanded
                }
                Loader {
                    width: parent.width
                    active: recent.open
                    visible: active
                    sourceComponent: Column {
                        ActionList {
                            width: parent.width
                            model: settings.actions
                        }
                        Separator {
                            x: 16
                            width: parent.width - 32
                        }
                    }
                }
                SettingRow {
                    objectName: "ignored"
                    width: parent.width
                    height: ignored.count > 0 ? 40 : 48
                    title: Words.text(settings.ignoredTitle)
                    separated: ignored.count === 0
                }
                Repeater {
                    id: ignored
                    model: settings.ignored

                    SettingRow {
                        id: ignoredRow

                        required property string key
                        required property string name
                        required property string moment
                        required property int index

                        width: groups.width
                        height: 50
                        title: Words.text(name)
                        note: moment
                        separated: index === ignored.count - 1

                        Button {
                            objectName: "restore " + ignoredRow.key
                            size: Button.Small
                            text: Words.text("Restore")
                            Accessible.name: text + " " + ignoredRow.title + " " + ignoredRow.moment
                            onClicked: Store.unignore(ignoredRow.key)
                        }
                    }
                }
                SettingRow {
                    width: parent.width
                    title: Words.text("Clear local history")
                    note: Words.text("Deletes saved attribution, action history, ignored findings and battery history. Live monitoring continues.")
                    separated: false

                    Button {
                        objectName: "clearHistory"
                        kind: Button.Danger
                        text: Words.text("Clear history")
                        onClicked: confirmClear.open()
                    }
                }
            }

            SettingsGroup {
                width: parent.width
                title: Words.text("Hall of Flame")

                SettingRow {
                    width: parent.width
                    title: Words.text("Open collection")
                    note: Words.text("Badges and records are stored locally. Optional cloud backup keeps a copy in your account. Daily local summaries cover 90 days.")

                    Button {
                        objectName: "openCollection"
                        text: Words.text("Open collection")
                        onClicked: settings.openCollection()
                    }
                }
                SettingRow {
                    width: parent.width
                    title: Words.text("Reset collection")
                    separated: false

                    Button {
                        objectName: "resetCollection"
                        kind: Button.Danger
                        text: Words.text("Reset collection")
                        enabled: Store.canResetCollection
                        disabledReason: Words.text("There is no collection in this copy of the app yet.")
                        onClicked: confirmCollectionReset.open()
                    }
                }
            }
            CloudSettings { width: parent.width }

            UpdateSettings {
                id: updates
                width: parent.width
                onAskedChanged: page.revealUpdates()
            }
        }
    }

    Toast {
        objectName: "message"
        x: Math.round((parent.width - width) / 2)
        y: parent.height - height - 24
        widest: Math.min(560, root.width - 48)
        shown: Store.settingsMessage.length > 0
        text: Words.text(Store.settingsMessage)
        iconName: "info"
        tone: Theme.info
        closeLabel: Words.text("Close")
        onDismissed: Store.settingsMessage = ""
    }

    Loader {
        id: chooser

        function end(shown: bool): void {
            if (!shown)
                Store.settingsMessage = "The folder chooser could not be opened.";
            // Not while it is still telling about it.
            Qt.callLater(() => chooser.active = false);
        }

        active: false
        // By name, so that what it needs is loaded by who asks for it alone.
        source: "FolderChooser.qml"
        onLoaded: {
            item.chosen.connect(Store.grantProjectAccess);
            item.closed.connect(end);
            item.ask();
        }
        onStatusChanged: if (status === Loader.Error) end(false)
    }

    Confirmation {
        id: confirmClear
        objectName: "confirmClear"
        title: Words.text("Clear local history?")
        question: Words.text("Deletes saved attribution, action history, ignored findings and battery history. Live monitoring continues.")
        confirm: Words.text("Clear history")
        onConfirmed: Store.clearHistory()
    }
    Confirmation {
        id: confirmCollectionReset
        objectName: "confirmCollectionReset"
        title: Words.text("Reset Hall of Flame?")
        question: Words.text("Deletes all earned badges, progress, personal records and weekly summaries from this copy of the app. This cannot be undone.")
        confirm: Words.text("Reset collection")
        onConfirmed: Store.resetCollection()
    }
}
