import QtQuick
import Varnet

GalleryBlock {
    caption: "Finding rows: sustained CPU, forgotten (hover), started again"
    width: 992
    height: 112

    Row {
        x: 8
        y: 36
        spacing: 8

        FindingRowView { width: 320; title: "storefront is working overtime"; explanation: "80%+ of one CPU core for over a minute. May be intentional."; iconName: "flame"; tone: Theme.bad; ignoreLabel: "Ignore" }
        FindingRowView { width: 320; title: "Vite may be forgotten"; explanation: "Codex exited 52m ago. The server is still running; it may still be in use."; iconName: "moon"; tone: Theme.warn; ignoreLabel: "Ignore"; preview: "hover" }
        FindingRowView { width: 320; title: "Vite started again"; explanation: "A new instance appeared after the reviewed service stopped. A parent tool may have restarted it."; iconName: "refresh"; tone: Theme.warn; ignoreLabel: "Ignore" }
    }
}
