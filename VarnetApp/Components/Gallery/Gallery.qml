import QtQuick
import Varnet

// Every building block in every state, on one page of 1040 by 1164.
Rectangle {
    implicitWidth: 1040
    implicitHeight: 1164
    color: Theme.bg

    GalleryButtons { x: 24; y: 24 }
    GalleryControls { x: 528; y: 24 }
    GalleryFields { x: 24; y: 276 }
    GalleryPills { x: 528; y: 276 }
    GalleryRows { x: 24; y: 504 }
    GallerySidebar { x: 528; y: 504 }
    GalleryFigures { x: 776; y: 504 }
    GalleryFindings { x: 24; y: 892 }
    GalleryIcons { x: 24; y: 1020 }
}
