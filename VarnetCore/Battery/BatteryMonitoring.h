#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Battery/BatteryReading.h"
#include "VarnetCore/Battery/BatteryTracker.h"

#include <filesystem>
#include <optional>
#include <string>

namespace varnet {

/// Ties the battery's memory to its file. A file that cannot be understood, one of a newer version among
/// them, is never written over; live readings flow all the same. A plain value for one thread.
struct BatteryMonitoring {
    /// Reads "battery-history.json" of the folder; without one the history is empty.
    BatteryMonitoring(const std::filesystem::path& directory, Date now);

    /// Writes the history, privately and whole, unless the file is not to be touched. What happened is in
    /// `warning`.
    void save();

    /// Takes over another history and saves it, after copying the present file beside itself.
    /// @return empty on success, else what went wrong; without that copy nothing has changed
    std::optional<std::string> restore(BatteryArchive archive, Date now);

    std::filesystem::path url; ///< the file
    BatteryTracker tracker;
    BatteryReading reading;              ///< the latest; of the distant past when a new one is wanted at once
    Date lastSave = Date::distantPast(); ///< kept by whoever decides when to save
    std::optional<std::string> warning;  ///< a sentence for the user
    bool canSave = true;
};

} // namespace varnet
