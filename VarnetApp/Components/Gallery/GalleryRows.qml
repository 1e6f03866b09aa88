import QtQuick
import Varnet

GalleryBlock {
    caption: "Rows: rest, hover, pressed, ticked, open, read only"
    height: 372

    Column {
        x: 12
        y: 36
        width: 464
        spacing: 2

        component Sample: GroupRowView {
            width: 464
            tickLabel: "Select " + title
            stopLabel: "Stop " + title
        }

        Sample { title: "Meridian Browser"; subtitle: "24 processes"; primary: "9.8%"; secondary: "4.6 GB"; fraction: 0.82; tileLetter: "M"; tileTone: Theme.info }
        Sample { title: "Quill Editor"; subtitle: "11 processes"; primary: "7.4%"; secondary: "3.1 GB"; fraction: 0.62; tileLetter: "Q"; tileTone: Theme.memory; preview: "hover" }
        Sample { title: "Boardroom"; subtitle: "6 processes"; primary: "3.9%"; secondary: "912 MB"; fraction: 0.33; tileLetter: "B"; tileTone: Theme.good; preview: "pressed" }
        Sample { title: "Huddle Chat"; subtitle: "8 processes"; primary: "2.1%"; secondary: "1.2 GB"; fraction: 0.17; tileLetter: "H"; tileTone: Theme.bad; ticked: true }
        Sample { title: "storefront"; subtitle: "feature/checkout"; primary: "8.6%"; secondary: "2.4 GB"; fraction: 0.71; tileIcon: "projects"; tileTone: Theme.dev; barTone: Theme.dev; ports: "2 ports"; open: true }
        Sample { title: "display-server"; subtitle: "System process · read only"; primary: "1.9%"; secondary: "318 MB"; fraction: 0.16; tileIcon: "cpu"; barTone: Theme.faint; tickable: false; stoppable: false }
    }
}
