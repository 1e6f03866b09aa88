#pragma once

#include "VarnetApp/MainViews/RowTile.h"
#include "VarnetCore/Findings/StopPlan.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <string>
#include <vector>

namespace varnet {

/// How an outcome is toned: never by colour alone, the word stands beside it.
enum class OutcomeTone { none, good, muted, warn, bad };

/// A line of a review sheet: what would be stopped, then what became of it.
struct SheetRow {
    std::string key;
    QString name;
    QString note;    ///< beside the name: "Background process", "6 processes"
    QString figure;  ///< at the right: "PID 31882", "3.9%"
    QString figure2; ///< right of that; mostly empty
    QString outcome; ///< empty before there is one
    QString detail;  ///< below the line; mostly empty
    OutcomeTone tone = OutcomeTone::none;
    RowTile tile{};

    static std::vector<QByteArray> roles() {
        return {"name",   "note", "figure",   "figure2",  "outcome",
                "detail", "tone", "iconName", "tileTone", "tileLetter"};
    }
    QVariant value(int role) const;
    friend bool operator==(const SheetRow&, const SheetRow&) = default;
};

/// The word for an outcome.
/// @param changed that for a process which is not the reviewed one any more
QString outcomeText(StopOutcome outcome, const QString& changed);
OutcomeTone outcomeTone(StopOutcome outcome) noexcept;

} // namespace varnet
