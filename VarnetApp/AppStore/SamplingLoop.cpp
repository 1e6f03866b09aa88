#include "VarnetApp/AppStore/SamplingLoop.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Platform/ApplicationCatalog.h"

namespace varnet {

namespace {

Thermal thermalFrom(int state) noexcept {
    return state >= 0 && state <= static_cast<int>(Thermal::critical) ? static_cast<Thermal>(state)
                                                                      : Thermal::nominal;
}

/// What the store mirrors of the archive, copied on the engine's queue.
struct ArchiveCopy {
    std::map<std::string, Date> ignored;
    std::vector<HistoryRecord> actions;
    std::optional<std::string> persistenceError;
};

} // namespace

SamplingLoop::SamplingLoop(VarnetStore& store) : store_(store), catalogRead_(Date::distantPast()) {}

void SamplingLoop::start() {
    readCatalog(store_.clock_.now());
    pass();
}

void SamplingLoop::readCatalog(Date now) {
    if (store_.catalog_) applications_ = store_.catalog_->snapshot();
    catalogRead_ = now;
}

void SamplingLoop::pass() {
    const Date now = store_.clock_.now();
    if (now - catalogRead_ >= catalogInterval || now < catalogRead_) readCatalog(now);
    const auto& thermalState = store_.collaborators_.thermalState;
    const Thermal thermal = thermalFrom(thermalState ? thermalState() : 0);
    const bool visible = store_.visibleUI();
    const auto snapshot = std::make_shared<std::shared_ptr<const MonitorSnapshot>>();
    store_.runOnEngine(
        [snapshot, applications = applications_, thermal, visible](MonitorEngine& engine) {
            *snapshot = engine.sample(applications, thermal, visible);
        },
        [this, snapshot] {
            store_.accept(std::move(*snapshot));
            received();
        });
}

void SamplingLoop::received() {
    if (!store_.visibleUI()) {
        if (store_.notifications()) store_.notifyIfNeeded(store_.latestSnapshot());
        store_.mainQueue_.postAfter(pause, [this, alive = std::weak_ptr(store_.alive_)] {
            if (alive.lock()) pass();
        });
        return;
    }
    store_.detectRestarts();
    const auto copy = std::make_shared<ArchiveCopy>();
    store_.runOnEngine(
        [copy](MonitorEngine& engine) {
            *copy = {engine.archive().ignored, engine.archive().actions, engine.persistenceError()};
        },
        [this, copy] {
            store_.mirrorArchive(std::move(copy->ignored), std::move(copy->actions),
                                 std::move(copy->persistenceError));
            if (store_.notifications()) store_.notifyIfNeeded(store_.latestSnapshot());
            store_.mainQueue_.postAfter(pause, [this, alive = std::weak_ptr(store_.alive_)] {
                if (alive.lock()) pass();
            });
        });
}

} // namespace varnet
