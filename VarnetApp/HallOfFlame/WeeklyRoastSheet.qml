import QtQuick
import Varnet

// A week's card, frozen, with nothing in it that names anything.
CardSheet {
    id: sheet

    title: Words.text("Your week. Lightly roasted.")
    subtitle: Words.text("Frozen summary. No project names, paths or commands.")
    sheetWidth: 480
    onClosed: (sheet.model as WeeklyRoastSheetModel)?.closed()
}
