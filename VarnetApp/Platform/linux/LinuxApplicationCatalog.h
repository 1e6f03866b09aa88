#pragma once

#include "VarnetApp/Platform/ApplicationCatalog.h"
#include "VarnetApp/Platform/linux/DesktopEntries.h"
#include "VarnetApp/Platform/linux/ProcessAccess.h"
#include "VarnetApp/Platform/linux/RunningApplications.h"
#include "VarnetApp/Platform/linux/UnitEvents.h"
#include "VarnetCore/Base/Clock.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace varnet::platform {

/// The running applications of one user on Linux. An exit takes effect with its event. A launch is noted, and
/// the next snapshot looks for all noted ones in a single walk of the process table: a login that starts
/// thirty applications costs one walk, and the walk needs to know neither how nor where the control groups
/// are mounted nor whether a unit keeps its processes in groups below its own.
class LinuxApplicationCatalog final : public ApplicationCatalog {
public:
    struct Parts {
        const Clock& clock; ///< outlives the catalogue
        std::unique_ptr<ProcessAccess> access;
        std::unique_ptr<UnitEvents> events;
        DesktopPlaces places;
        std::uint32_t uid; ///< whose applications
    };

    explicit LinuxApplicationCatalog(Parts parts);

    std::vector<ApplicationDescriptor> snapshot() override;

private:
    struct Entry {
        ApplicationDescriptor descriptor;
        std::string unit;
        std::string mainUnit;

        bool isIn(const std::string& name) const { return unit == name || mainUnit == name; }
    };

    void listen();
    void refresh();
    void settle();
    void onUnitSettled(const std::string& unit);
    void onUnitRemoved(const std::string& unit);
    void remove(const std::string& unit);
    std::optional<Entry> entryFor(const RunningApplication& running);

    // Constant after construction.
    const Clock& clock_;
    const std::uint32_t uid_;
    const std::unique_ptr<ProcessAccess> access_;

    DesktopEntries desktopEntries_;
    std::unordered_map<std::int32_t, Entry> entries_; ///< by pid
    Date refreshed_ = Date::distantPast();            ///< last full listing
    std::set<std::string> settled_;                   ///< units to look at with the next snapshot

    // Last, so that it stops before what its handlers touch.
    const std::unique_ptr<UnitEvents> events_;
};

} // namespace varnet::platform
