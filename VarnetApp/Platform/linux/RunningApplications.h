#pragma once

#include "VarnetApp/Platform/linux/DesktopEntries.h"
#include "VarnetApp/Platform/linux/ProcessAccess.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace varnet::platform {

/// An installed application that runs, and by what it was found.
struct RunningApplication {
    const InstalledApplication* application = nullptr; ///< lives until the index is refreshed
    RunningProcess main;
    std::string unit;     ///< the service manager's unit that is the application; empty: found by its program
    std::string mainUnit; ///< the unit that holds the main process itself, in `unit` or the same
};

/// One user's processes at one moment, with the places they were put in and the applications these make.
class RunningApplications {
public:
    /// Reads the place of each of the user's processes; everybody else's are left out.
    /// @param access, entries outlive this
    RunningApplications(const std::vector<RunningProcess>& processes, std::uint32_t uid,
                        ProcessAccess& access, const DesktopEntries& entries);

    /// One for each unit that stands for an installed application. A unit's main process is its oldest whose
    /// parent is outside.
    std::vector<RunningApplication> inUnits() const;

    /// Those of the user's sessions that no unit stands for, found by what they execute. A process below
    /// another of the same application belongs to that one.
    std::vector<RunningApplication> byProgram() const;

private:
    struct Place {
        const InstalledApplication* application = nullptr; ///< null: no unit here is an application
        std::string unitPath; ///< up to and with that unit: names alone may come twice in a tree
        std::string unit;
        std::string innermostUnit;
        bool inUserSession = false;
    };
    struct Placed {
        RunningProcess process;
        const Place* place; ///< in `places_`
    };

    Place placeAt(const std::string& path) const;
    bool isBelowSame(const Placed& placed,
                     const std::unordered_map<std::int32_t, const InstalledApplication*>& matched) const;

    ProcessAccess& access_;
    const DesktopEntries& entries_;
    std::unordered_map<std::string, Place> places_; ///< by control group path
    std::vector<Placed> placed_;
    std::unordered_map<std::int32_t, std::size_t> positions_; ///< by pid, in `placed_`
};

} // namespace varnet::platform
