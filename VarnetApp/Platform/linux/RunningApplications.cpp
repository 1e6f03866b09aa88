#include "VarnetApp/Platform/linux/RunningApplications.h"

#include "VarnetApp/Platform/linux/ApplicationUnit.h"
#include "VarnetApp/Platform/linux/ControlGroup.h"

#include <tuple>

namespace varnet::platform {

namespace {

// As far as the monitor follows ancestors anywhere.
constexpr int mostAncestors = 40;

bool isOlder(const RunningProcess& a, const RunningProcess& b) {
    return std::tie(a.start, a.pid) < std::tie(b.start, b.pid);
}

} // namespace

RunningApplications::RunningApplications(const std::vector<RunningProcess>& processes, std::uint32_t uid,
                                         ProcessAccess& access, const DesktopEntries& entries)
    : access_(access), entries_(entries) {
    for (const RunningProcess& process : processes) {
        if (process.uid != uid || process.pid < 1) {
            continue;
        }
        std::string path = controlGroupPath(access_.controlGroup(process.pid)).value_or("/");
        auto place = places_.find(path);
        if (place == places_.end()) {
            Place made = placeAt(path);
            place = places_.emplace(std::move(path), std::move(made)).first;
        }
        positions_.emplace(process.pid, placed_.size());
        placed_.push_back({process, &place->second});
    }
}

RunningApplications::Place RunningApplications::placeAt(const std::string& path) const {
    Place place;
    place.inUserSession = isInUserSession(path);
    place.innermostUnit = innermostUnit(path);
    const std::vector<std::string_view> units = controlGroupUnits(path);
    // From the inside out: what an application starts in a unit of its own is an application of its own.
    for (auto unit = units.rbegin(); unit != units.rend() && place.inUserSession; ++unit) {
        for (const std::string& id : applicationIDs(*unit)) {
            if (const InstalledApplication* found = entries_.byID(id)) {
                place.application = found;
                place.unit = *unit;
                // The names are pieces of `path`, so the end of one is an offset into it.
                place.unitPath =
                    path.substr(0, static_cast<std::size_t>(unit->data() + unit->size() - path.data()));
                return place;
            }
        }
    }
    return place;
}

std::vector<RunningApplication> RunningApplications::inUnits() const {
    struct Main {
        const Placed* outside = nullptr; ///< oldest whose parent is not in the unit
        const Placed* any = nullptr;     ///< oldest of all, should the parents go in a circle
    };
    std::unordered_map<std::string_view, Main> units;
    for (const Placed& placed : placed_) {
        if (placed.place->application == nullptr) {
            continue;
        }
        Main& main = units[placed.place->unitPath];
        if (main.any == nullptr || isOlder(placed.process, main.any->process)) {
            main.any = &placed;
        }
        const auto parent = positions_.find(placed.process.parent);
        const bool inside =
            parent != positions_.end() && placed_[parent->second].place->unitPath == placed.place->unitPath;
        if (!inside && (main.outside == nullptr || isOlder(placed.process, main.outside->process))) {
            main.outside = &placed;
        }
    }
    std::vector<RunningApplication> found;
    found.reserve(units.size());
    for (const auto& [path, main] : units) {
        const Placed& placed = main.outside != nullptr ? *main.outside : *main.any;
        found.push_back(
            {placed.place->application, placed.process, placed.place->unit, placed.place->innermostUnit});
    }
    return found;
}

std::vector<RunningApplication> RunningApplications::byProgram() const {
    std::unordered_map<std::int32_t, const InstalledApplication*> matched;
    for (const Placed& placed : placed_) {
        if (placed.place->application == nullptr && placed.place->inUserSession) {
            const std::string path = access_.executable(placed.process.pid);
            if (const InstalledApplication* found = path.empty() ? nullptr : entries_.byExecutable(path)) {
                matched.emplace(placed.process.pid, found);
            }
        }
    }
    std::vector<RunningApplication> found;
    for (const Placed& placed : placed_) {
        const auto match = matched.find(placed.process.pid);
        if (match != matched.end() && !isBelowSame(placed, matched)) {
            found.push_back({match->second, placed.process, {}, {}});
        }
    }
    return found;
}

bool RunningApplications::isBelowSame(
    const Placed& placed,
    const std::unordered_map<std::int32_t, const InstalledApplication*>& matched) const {
    const InstalledApplication* application = matched.at(placed.process.pid);
    const Placed* current = &placed;
    for (int step = 0; step < mostAncestors; ++step) {
        const auto parent = positions_.find(current->process.parent);
        if (parent == positions_.end()) {
            return false;
        }
        const Placed& above = placed_[parent->second];
        // A parent younger than its child is another process under a reused pid.
        if (&above == &placed || above.process.start > current->process.start) {
            return false;
        }
        const auto match = matched.find(above.process.pid);
        if (above.place->application == application ||
            (match != matched.end() && match->second == application)) {
            return true;
        }
        current = &above;
    }
    return false;
}

} // namespace varnet::platform
