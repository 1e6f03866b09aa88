pragma ComponentBehavior: Bound

import QtQuick
import Varnet

// The way from all projects to what the map shows.
Item {
    id: way

    required property ProjectStorageModel model

    implicitHeight: 26
    clip: steps.implicitWidth > steps.room

    Accessible.role: Accessible.Grouping
    Accessible.name: Words.text("Projects")

    Row {
        id: steps

        readonly property int room: way.width - (details.visible ? details.width + 8 : 0)

        // The picture of the first step stands where the map begins; the end stays in sight.
        x: Math.min(-6, room - implicitWidth)

        Repeater {
            model: way.model.crumbs

            Row {
                id: step

                required property int index
                required property string modelData

                readonly property bool isCurrent: index === way.model.crumbs.length - 1

                Icon {
                    width: 16
                    height: 26
                    visible: step.index > 0
                    size: 14
                    name: "right"
                    color: Theme.muted
                }
                DiskCrumbButton {
                    objectName: "projectCrumb" + step.index
                    text: step.modelData
                    current: step.isCurrent
                    iconName: step.index === 0 ? "projects" : ""
                    size: step.isCurrent ? way.model.crumbSize : ""
                    onClicked: way.model.goTo(step.index)
                }
            }
        }
    }
    Button {
        id: details
        objectName: "projectDetails"
        x: way.width - width
        y: -1
        visible: way.model.projectOpen
        size: Button.Small
        text: Words.text("Details")
        onClicked: way.model.openDetails()
    }
}
