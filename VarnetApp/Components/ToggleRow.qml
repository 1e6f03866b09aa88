import QtQuick
import Varnet

// A setting that is on or off; the whole row answers the pointer.
SettingRow {
    id: row

    required property bool turnedOn
    property string disabledReason: ""

    signal wanted(bool on)

    onClicked: if (toggle.enabled) row.wanted(!row.turnedOn)

    Toggle {
        id: toggle
        label: row.title
        disabledReason: row.disabledReason
        turnedOn: row.turnedOn
        onWanted: (on) => row.wanted(on)
    }
}
