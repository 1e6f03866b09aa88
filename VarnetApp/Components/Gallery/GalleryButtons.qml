import QtQuick
import Varnet

GalleryBlock {
    caption: "Buttons: rest, hover, pressed, focus, disabled"
    height: 236

    Column {
        x: 16
        y: 40
        spacing: 12

        Repeater {
            model: ListModel {
                ListElement { kind: Button.Primary; words: "Quit" }
                ListElement { kind: Button.Secondary; words: "Cancel" }
                ListElement { kind: Button.Danger; words: "Force Quit" }
                ListElement { kind: Button.Ghost; words: "Clear" }
            }
            Row {
                id: line
                required property int kind
                required property string words
                spacing: 12

                Repeater {
                    model: ["", "hover", "pressed", "focus", "disabled"]
                    Button {
                        required property string modelData
                        width: 80
                        kind: line.kind
                        text: line.words
                        preview: modelData
                        enabled: modelData !== "disabled"
                    }
                }
            }
        }
    }
}
