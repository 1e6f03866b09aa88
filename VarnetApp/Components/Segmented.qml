import QtQuick
import QtQuick.Templates as T
import Varnet

// A choice among a few words: one tab stop, arrow keys move the choice.
FocusScope {
    id: control

    // What is chosen here, for a screen reader.
    required property string label
    required property list<string> options
    property list<string> icons
    property int currentIndex: 0
    property bool small: false
    // Forces a state for pictures: the index that looks hovered, and the ring.
    property int previewHover: -1
    property bool previewFocus: false

    // The user chose this one; the owner sets `currentIndex`.
    signal chosen(int index)

    implicitWidth: segments.implicitWidth + 4
    implicitHeight: small ? 28 : 32

    Keys.onLeftPressed: if (currentIndex > 0) chosen(currentIndex - 1)
    Keys.onRightPressed: if (currentIndex < options.length - 1) chosen(currentIndex + 1)
    Keys.onUpPressed: if (currentIndex > 0) chosen(currentIndex - 1)
    Keys.onDownPressed: if (currentIndex < options.length - 1) chosen(currentIndex + 1)

    Accessible.role: Accessible.PageTabList
    Accessible.name: control.label

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.bed
        border.color: Theme.hairline
        border.width: 1

        FocusRing { shown: control.previewFocus || segments.ringed }
    }
    Row {
        id: segments
        readonly property bool ringed: repeater.count > 0 && control.activeFocus
                                       && (repeater.itemAt(control.currentIndex) as Segment)?.visualFocus === true
        x: 2
        y: 2
        height: parent.height - 4

        Repeater {
            id: repeater
            model: control.options

            Segment {
                required property int index
                required property string modelData
                height: segments.height
                text: modelData
                iconName: index < control.icons.length ? control.icons[index] : ""
                chosen: index === control.currentIndex
                previewHover: index === control.previewHover
                enabled: control.enabled
                focus: chosen
                focusPolicy: chosen ? Qt.StrongFocus : Qt.ClickFocus
                onClicked: control.chosen(index)
            }
        }
    }
}
