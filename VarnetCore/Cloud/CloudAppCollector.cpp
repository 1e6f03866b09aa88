#include "VarnetCore/Cloud/CloudAppCollector.h"

#include "VarnetCore/Base/Sha256.h"
#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Cloud/CloudExport.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnet {

namespace {

constexpr std::uint64_t gibibyte = 1'073'741'824;

std::int64_t minuteOf(Date date) {
    return static_cast<std::int64_t>(std::trunc(date.sinceUnixEpoch() / 60));
}

} // namespace

CloudAppCollector::CloudAppCollector(std::string aggregationKey)
    : aggregationKey_(std::move(aggregationKey)) {}

std::string CloudAppCollector::newKey() {
    return Uuid::random().text();
}

std::vector<CloudItem> CloudAppCollector::observe(const MonitorSnapshot& snapshot) {
    const std::int64_t minute = minuteOf(snapshot.date);
    const double seconds = previous_ ? snapshot.date - *previous_ : 0;
    previous_ = snapshot.date;
    // The stretch that leads over the boundary belongs to the minute in which it began.
    if (seconds > 0 && seconds <= longestGap)
        for (const ApplicationGroup& group : snapshot.groups)
            add(group, seconds, snapshot.logicalCores);
    if (minute_ == minute) return {};
    std::vector<CloudItem> items = minute_
                                       ? flush(snapshot.date, snapshot.logicalCores, snapshot.physicalMemory)
                                       : std::vector<CloudItem>{};
    minute_ = minute;
    measures_.clear();
    return items;
}

void CloudAppCollector::add(const ApplicationGroup& group, double seconds, int cores) {
    const bool application = group.kind == GroupKind::application;
    // What a project is called is nobody's business: projects are one line together.
    const std::string name =
        group.kind == GroupKind::project ? std::string("Projects") : CloudExport::name(group.name);
    // Neither a path nor a name can be read from the key.
    const std::string key = (application ? "app:" : "process:") +
                            sha256(application ? group.id : std::string(rawValue(group.kind)) + name);
    Measure& measure = measures_[key];
    measure.name = name;
    measure.category = rawValue(group.kind);
    measure.seconds = std::min(measure.seconds + seconds, 60.0 + longestGap);
    measure.cpu += std::clamp(group.instantaneousCPU().value_or(0), 0.0, 100.0 * cores) * seconds;
    measure.memory += static_cast<double>(group.memory().value_or(0)) * seconds;
}

std::vector<CloudItem> CloudAppCollector::flush(Date at, int cores, std::uint64_t ram) {
    std::vector<CloudItem> items;
    for (const auto& [key, measure] : measures_) {
        auto item = CloudItem::make("app", std::to_string(*minute_) + ":" + key, at.sinceUnixEpoch(),
                                    {{"appID", key},
                                     {"name", measure.name},
                                     {"category", measure.category},
                                     {"seconds", measure.seconds},
                                     {"cpuSeconds", measure.cpu},
                                     {"memorySeconds", measure.memory},
                                     {"physicalFootprint", "physicalFootprint"},
                                     {"cores", cores},
                                     {"ramGB", ram / gibibyte}},
                                    aggregationKey_);
        if (item) items.push_back(std::move(*item));
    }
    return items;
}

} // namespace varnet
