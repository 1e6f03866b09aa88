pragma ComponentBehavior: Bound

import QtQuick
import Varnet

// The way from the disk to the folder that is shown.
Item {
    id: way

    required property WholeDiskModel model

    implicitHeight: 26
    clip: steps.implicitWidth > width

    Binding {
        target: way.model
        property: "crumbRoom"
        // The last step keeps room for its name and its size.
        value: Math.max(3, Math.floor((way.width - 120) / 96) + 1)
    }

    Accessible.role: Accessible.Grouping
    Accessible.name: Words.text("Folder")

    Row {
        id: steps
        // The picture of the first step stands where the map begins.
        x: Math.min(-6, way.width - implicitWidth)
        spacing: 0

        Repeater {
            model: way.model.crumbs

            Row {
                id: step

                required property string key
                required property string title
                required property bool isTop
                required property bool isCurrent
                required property bool collapsed

                Icon {
                    width: 16
                    height: 26
                    visible: !step.isTop
                    size: 14
                    name: "right"
                    color: Theme.muted
                }
                DiskCrumbButton {
                    objectName: "crumb " + step.title
                    text: step.title
                    current: step.isCurrent
                    iconName: step.isTop ? "storage" : ""
                    size: step.isCurrent ? way.model.size : ""
                    help: step.collapsed ? step.key : ""
                    onClicked: way.model.goTo(step.key)
                }
            }
        }
    }
}
