#pragma once

#include "VarnetApp/Localization/Figures.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace varnet {

struct DiskUsageScan;

/// The words of the whole disk's page.
namespace WholeDiskTexts {

/// What stands where there is nothing to show. Without a title there is something.
struct Notice {
    QString icon;
    QString title;
    QString text;
    bool isError = false;
    bool isBusy = false; ///< it says what is under way
    bool canScan = false;

    friend bool operator==(const Notice&, const Notice&) = default;
};

/// A line below the map.
struct Status {
    QString text; ///< empty: none
    bool isError = false;

    friend bool operator==(const Status&, const Status&) = default;
};

/// What is known of the disk.
struct State {
    const DiskUsageScan* scan = nullptr; ///< of the folder that is shown; null: not told yet
    bool started = false;                ///< a scan was ever begun
    bool scanning = false;
    std::uint64_t itemsChecked = 0;
    std::optional<std::string> failure = {};
    bool searching = false;
};

/// @param empty nothing is shown of the folder
Notice notice(const State& state, bool empty, const Figures& figures);
Status status(const State& state, bool empty);
QString itemsChecked(std::uint64_t count, const Figures& figures);
/// "Show more (20 remaining)"; empty for none.
QString showMore(std::size_t remaining, const Figures& figures);
/// How much of the folder this user's rights do not reach.
QString unreadable(std::int64_t count, const Figures& figures);

} // namespace WholeDiskTexts
} // namespace varnet
