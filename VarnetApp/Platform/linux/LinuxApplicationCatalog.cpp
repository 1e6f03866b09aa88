#include "VarnetApp/Platform/linux/LinuxApplicationCatalog.h"

#include "VarnetApp/Platform/linux/ApplicationUnit.h"

#include <cstddef>
#include <utility>

namespace varnet::platform {

namespace {

constexpr double listingInterval = 60; // seconds

// More at once than anybody launches; the listing repairs what a flood leaves out.
constexpr std::size_t mostSettled = 4096;

/// Whether a unit may hold an application. Scopes are made by launchers, which name them; a service inside an
/// application's slice may be called anything.
bool mayHoldApplication(const std::string& unit) {
    return unit.ends_with(".service") || (unit.ends_with(".scope") && !applicationIDs(unit).empty());
}

} // namespace

LinuxApplicationCatalog::LinuxApplicationCatalog(Parts parts)
    : clock_(parts.clock), uid_(parts.uid), access_(std::move(parts.access)),
      desktopEntries_(std::move(parts.places)), events_(std::move(parts.events)) {}

std::vector<ApplicationDescriptor> LinuxApplicationCatalog::snapshot() {
    const Date now = clock_.now();
    const double elapsed = now - refreshed_;
    if (elapsed >= listingInterval || elapsed < 0) { // below zero: the clock was set back
        listen();
        refresh();
        refreshed_ = now;
    } else if (!settled_.empty()) {
        settle();
    }
    std::vector<ApplicationDescriptor> descriptors;
    descriptors.reserve(entries_.size());
    for (const auto& [pid, entry] : entries_) {
        descriptors.push_back(entry.descriptor);
    }
    return descriptors;
}

void LinuxApplicationCatalog::listen() {
    events_->listen({.settled = [this](const std::string& unit) { onUnitSettled(unit); },
                     .removed = [this](const std::string& unit) { onUnitRemoved(unit); }});
}

void LinuxApplicationCatalog::refresh() {
    const auto processes = access_->processes();
    if (!processes) {
        return;
    }
    desktopEntries_.refresh();
    const RunningApplications running(*processes, uid_, *access_, desktopEntries_);
    std::unordered_map<std::int32_t, Entry> found;
    for (const auto& list : {running.inUnits(), running.byProgram()}) {
        for (const RunningApplication& application : list) {
            if (auto entry = entryFor(application)) {
                found.try_emplace(application.main.pid, std::move(*entry));
            }
        }
    }
    entries_ = std::move(found);
    settled_.clear();
}

void LinuxApplicationCatalog::settle() {
    const std::set<std::string> units = std::exchange(settled_, {});
    const auto processes = access_->processes();
    if (!processes) {
        return;
    }
    desktopEntries_.refresh();
    for (const std::string& unit : units) {
        remove(unit); // a service that was started anew has another main process
    }
    const RunningApplications running(*processes, uid_, *access_, desktopEntries_);
    for (const RunningApplication& application : running.inUnits()) {
        if (units.contains(application.unit) || units.contains(application.mainUnit)) {
            if (auto entry = entryFor(application)) {
                entries_.insert_or_assign(application.main.pid, std::move(*entry));
            }
        }
    }
}

void LinuxApplicationCatalog::onUnitSettled(const std::string& unit) {
    if (mayHoldApplication(unit) && settled_.size() < mostSettled) {
        settled_.insert(unit);
    }
}

void LinuxApplicationCatalog::onUnitRemoved(const std::string& unit) {
    settled_.erase(unit);
    remove(unit);
}

void LinuxApplicationCatalog::remove(const std::string& unit) {
    std::erase_if(entries_, [&](const auto& item) { return item.second.isIn(unit); });
}

std::optional<LinuxApplicationCatalog::Entry>
LinuxApplicationCatalog::entryFor(const RunningApplication& running) {
    Entry entry{.descriptor = {.bundlePath = running.application->path,
                               .bundleID = running.application->id,
                               .name = running.application->name,
                               .pid = running.main.pid,
                               .processStart = std::nullopt},
                .unit = running.unit,
                .mainUnit = running.mainUnit};
    if (const auto identity = access_->identity(running.main.pid)) {
        // Between the table and here the process may have ended and its pid gone to another.
        if (identity->start != running.main.start || identity->uid != uid_) {
            return std::nullopt;
        }
        entry.descriptor.processStart = identity->start;
    }
    return entry;
}

} // namespace varnet::platform
