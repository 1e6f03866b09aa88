import QtQuick
import QtQuick.Templates as T
import Varnet

// The welcome: one screen, shown until it is finished. Where there is little height, the mascot stands beside
// the words instead of above them.
FocusScope {
    id: root

    readonly property bool low: height < 660
    property bool login: true

    UpdateModel { id: updates }

    Component.onCompleted: start.forceActiveFocus(Qt.TabFocusReason)

    Rectangle {
        anchors.fill: parent
        color: Theme.bg
    }
    GlowItem {
        anchors.fill: parent
        center: Qt.point(Math.round(column.x + mascot.x + mascot.width / 2), Math.round(column.y + mascot.y + mascot.height * 0.58))
        cornerRadius: 0
        strength: Theme.dark ? 0.22 : 0.16
    }

    Flickable {
        anchors.fill: parent
        contentHeight: Math.max(height, column.y + column.implicitHeight + 24)
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollThumb {}

        Column {
            id: column
            x: Math.round((parent.width - width) / 2)
            y: Math.max(20, Math.round((root.height - implicitHeight) * 0.42))
            width: Math.min(480, parent.width - 48)
            spacing: root.low ? 12 : 16

            Item {
                id: hero
                width: parent.width
                height: root.low ? Math.max(96, words.implicitHeight) : 148 + words.implicitHeight + 14

                MascotItem {
                    id: mascot
                    x: root.low ? Math.round((hero.width - width - 20 - words.width) / 2)
                                : Math.round((hero.width - width) / 2)
                    y: root.low ? Math.round((hero.height - height) / 2) : 0
                    width: root.low ? 96 : 128
                    height: width
                    expression: "smug"
                }
                Column {
                    id: words
                    readonly property int alignment: root.low ? Text.AlignLeft : Text.AlignHCenter
                    x: root.low ? mascot.x + mascot.width + 20 : 0
                    y: root.low ? Math.round((hero.height - implicitHeight) / 2) : 148
                    width: root.low ? Math.min(hero.width - 116, Math.ceil(headline.implicitWidth)) : hero.width
                    spacing: 4

                    DisplayText {
                        id: headline
                        width: parent.width
                        horizontalAlignment: words.alignment
                        text: Words.text("Your AI finished.\nWhat’s still running?")
                        wrapMode: Text.Wrap
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }
                    Label {
                        width: parent.width
                        horizontalAlignment: words.alignment
                        text: Words.text("Real readings. Unsolicited opinions.")
                        color: Theme.muted
                        wrapMode: Text.Wrap
                    }
                }
            }
            Card {
                width: parent.width
                height: promises.implicitHeight

                Column {
                    id: promises
                    width: parent.width

                    Promise {
                        width: parent.width
                        iconName: "lock"
                        title: Words.text("Local monitoring")
                        note: Words.text("Find apps and servers using your Mac. Stop what you don’t need.")
                    }
                    Separator {
                        x: 60
                        width: parent.width - x - 16
                    }
                    Promise {
                        width: parent.width
                        iconName: "check"
                        title: Words.text("No account required")
                    }
                }
            }
            Card {
                width: parent.width
                height: toggles.implicitHeight

                Column {
                    id: toggles
                    width: parent.width

                    ToggleRow {
                        objectName: "updates"
                        width: parent.width
                        title: Words.text("Check for updates daily")
                        note: Words.text("Update checks only. No process data sent.")
                        turnedOn: updates.automatic
                        onWanted: (on) => updates.automatic = on
                    }
                    ToggleRow {
                        objectName: "login"
                        width: parent.width
                        title: Words.text("Launch at login")
                        note: Words.text("Starts quietly in the menu bar when you sign in. You can turn this off in Settings.")
                        turnedOn: root.login
                        separated: false
                        onWanted: (on) => root.login = on
                    }
                }
            }
            Item {
                width: parent.width
                height: start.height + (root.low ? 4 : 8)

                Button {
                    id: start
                    objectName: "start"
                    anchors.bottom: parent.bottom
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: Math.max(240, implicitWidth)
                    kind: Button.Primary
                    size: Button.Large
                    text: Words.text("Start using the app")
                    onClicked: Store.finishOnboarding(root.login)
                }
            }
        }
    }
}
