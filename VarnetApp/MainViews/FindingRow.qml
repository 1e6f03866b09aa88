import QtQuick
import Varnet

// A finding of the attention block. The whole row opens the details.
FindingRowView {
    id: row

    required property string key
    required property OverviewModel overview

    ignoreLabel: Words.text("Ignore")
    openLabel: Words.text("Open details for " + title)
    onOpened: row.overview.inspectFinding(key)
    onIgnored: row.overview.ignoreFinding(key)
}
