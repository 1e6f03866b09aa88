import QtQuick
import QtQuick.Templates as T
import Varnet

// A field of a form under its own words: one line, or several that scroll.
FocusScope {
    id: field

    required property string label
    required property string text
    property bool lines: false
    property int maximumLength: 32767
    property string preview: ""

    readonly property bool ringed: preview === "focus" || (editor.item?.activeFocus === true && editor.item.byKey)

    // The user has changed it; the owner sets `text`.
    signal edited(string text)

    implicitHeight: 22 + (lines ? 120 : 32)

    CaptionText {
        id: words
        width: parent.width
        text: field.label
        Accessible.ignored: true
    }
    Rectangle {
        y: 22
        width: parent.width
        height: parent.height - y
        radius: Theme.radius
        color: field.enabled ? Theme.surface : Theme.fade(Theme.track, 0.75)
        border.color: editor.item?.activeFocus || pointer.hovered ? Theme.faint : Theme.controlLine
        border.width: 1

        FocusRing { shown: field.ringed }
        HoverHandler { id: pointer }
        Loader {
            id: editor
            anchors.fill: parent
            focus: true
            sourceComponent: field.lines ? many : one
        }
    }
    Component {
        id: one

        T.TextField {
            readonly property bool byKey: focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason

            focus: true
            leftPadding: 12
            rightPadding: 12
            verticalAlignment: TextInput.AlignVCenter
            selectByMouse: true
            activeFocusOnTab: true
            text: field.text
            maximumLength: field.maximumLength
            font: Theme.body
            color: enabled ? Theme.text : Theme.faint
            selectionColor: Theme.fade(Theme.accent, 0.35)
            selectedTextColor: Theme.text
            onTextEdited: field.edited(text)
            Accessible.role: Accessible.EditableText
            Accessible.name: field.label
        }
    }
    Component {
        id: many

        Flickable {
            id: scroller

            readonly property bool byKey: area.focusReason === Qt.TabFocusReason
                                          || area.focusReason === Qt.BacktabFocusReason

            focus: true
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollThumb {}

            T.TextArea.flickable: T.TextArea {
                id: area
                focus: true
                padding: 10
                leftPadding: 12
                rightPadding: 12
                wrapMode: TextEdit.Wrap
                selectByMouse: true
                activeFocusOnTab: true
                text: field.text
                font: Theme.body
                color: enabled ? Theme.text : Theme.faint
                selectionColor: Theme.fade(Theme.accent, 0.35)
                selectedTextColor: Theme.text
                onTextChanged: {
                    if (length > field.maximumLength)
                        remove(field.maximumLength, length);
                    if (text !== field.text)
                        field.edited(text);
                }
                // Tab leads on, as in the other fields.
                KeyNavigation.priority: KeyNavigation.BeforeItem
                KeyNavigation.tab: nextItemInFocusChain(true)
                KeyNavigation.backtab: nextItemInFocusChain(false)
                Accessible.role: Accessible.EditableText
                Accessible.multiLine: true
                Accessible.name: field.label
            }
        }
    }
}
