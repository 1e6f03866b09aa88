#pragma once

#include "VarnetApp/AppStore/Page.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/MainViews/RowTile.h"

#include <QByteArray>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// How the rows of one list tell their figures.
struct RowTelling {
    Figures figures;
    SortOrder sort = SortOrder::cpu;
};

/// A row of an activity list: a group or a server. Raw values; words are made when a delegate asks.
struct ActivityRow {
    std::string key; ///< id of the group or of the service
    RowKind kind = RowKind::process;
    std::string name;
    std::string subtitle;
    std::string ports;                   ///< the pill beside the name; empty: none
    std::string state;                   ///< "Possibly forgotten"; mostly empty
    std::string worktree;                ///< of a server; empty: none
    std::vector<std::string> agents;     ///< those that started it
    std::optional<double> cpu;           ///< percent of the whole machine
    std::optional<std::uint64_t> memory; ///< bytes
    double share = 0;                    ///< of the bar, 0 to 1
    bool ticked = false;
    bool open = false;      ///< its details are shown
    bool stoppable = false; ///< and so it can be ticked
    std::string stopHelp;
    std::string stopReason;              ///< why it cannot be stopped
    const RowTelling* telling = nullptr; ///< outlives the row

    static std::vector<QByteArray> roles();
    QVariant value(int role) const;
    friend bool operator==(const ActivityRow&, const ActivityRow&) = default;
};

} // namespace varnet
