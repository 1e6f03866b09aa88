import QtQuick
import Varnet

// What takes room: what agents and projects occupy, or the whole disk.
FocusScope {
    id: view

    // The window has only room for little padding.
    required property bool narrow

    readonly property int padding: narrow ? 16 : 24
    readonly property int contentTop: head.y + head.height + 16

    StorageScopeModel { id: scope }

    PageHead {
        id: head

        x: view.padding
        y: view.narrow ? 16 : 20
        width: view.width - 2 * view.padding
        headline: Words.text("Storage")
        line: scope.wholeDisk
              ? Words.text("External drives aren’t included. The scan only reads names and sizes; it doesn’t open or upload your files.")
              : Words.text("Allocated space across scanned folders. Shared APFS blocks may overlap, so this is not guaranteed free space.")
    }
    Segmented {
        objectName: "storageScope"
        x: view.width - view.padding - width
        y: head.y + 1
        label: Words.text("Scope")
        options: [Words.text("AI & projects"), Words.text("Whole disk")]
        currentIndex: scope.wholeDisk ? 1 : 0
        onChosen: (index) => scope.wholeDisk = index === 1
    }
    Loader {
        y: view.contentTop
        width: view.width
        height: view.height - y
        focus: true
        sourceComponent: scope.wholeDisk ? disk : projects
    }
    Component {
        id: projects

        ProjectStorageView { padding: view.padding }
    }
    Component {
        id: disk

        WholeDiskView { padding: view.padding }
    }

    StorageDetailSheet {}
    StorageReviewSheet {}
}
