#include "VarnetApp/MainViews/CPUShares.h"

namespace varnet {

namespace {

struct Sum {
    double cores = 0; ///< percent of one core
    bool anyGroup = false;
    bool anyReading = false;

    void add(std::optional<double> cpu) {
        anyGroup = true;
        anyReading = anyReading || cpu;
        cores += cpu.value_or(0);
    }
    std::optional<double> whole(const MonitorSnapshot& snapshot) const {
        if (anyGroup && !anyReading) return std::nullopt;
        return snapshot.normalized(cores);
    }
};

} // namespace

CPUShares cpuShares(const MonitorSnapshot& snapshot) {
    Sum apps;
    Sum dev;
    Sum other;
    for (const ApplicationGroup& group : snapshot.groups) {
        Sum& sum = group.kind == GroupKind::application ? apps
                   : group.kind == GroupKind::project   ? dev
                                                        : other;
        sum.add(group.cpu());
    }
    return {apps.whole(snapshot), dev.whole(snapshot), other.whole(snapshot)};
}

bool measurementsReady(const MonitorSnapshot& snapshot) noexcept {
    return !snapshot.processes.empty() && !snapshot.error && snapshot.systemCPU;
}

} // namespace varnet
