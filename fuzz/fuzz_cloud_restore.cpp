// Whatever the service sends as records, what comes of it is in order, is written and read back unchanged,
// and finds its way to the service and back once more.

#include "VarnetCore/Cloud/CloudExport.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

namespace {

bool isAscending(const std::vector<FlameDay>& days) {
    return std::ranges::adjacent_find(
               days, [](const FlameDay& a, const FlameDay& b) { return !(a.date < b.date); }) == days.end();
}

/// What this machine has kept for itself.
FlameArchive localArchive(const std::string& timezone) {
    FlameArchive local;
    local.started = Date{700'000'000};
    local.timezone = timezone;
    local.metrics["stops"] = 3;
    local.tools = {"Claude Code"};
    local.qualifiedDays = {Date{700'012'800}};
    local.creditedStops = {"1:2:3"};
    local.days.push_back({.date = Date{700'012'800}, .stops = 2});
    return local;
}

/// What was exported, as the service hands it out again.
std::string asRecords(const std::vector<CloudItem>& items) {
    auto records = nlohmann::json::array();
    for (const CloudItem& item : items)
        records.push_back({{"kind", item.kind},
                           {"id", item.id},
                           {"at", item.at},
                           {"data", nlohmann::json::parse(item.data, nullptr, false)}});
    return records.dump();
}

void requireMerge(const FlameArchive& restored) {
    for (const std::string& timezone : {restored.timezone, std::string("Europe/Prague")}) {
        const FlameArchive local = localArchive(timezone);
        const FlameArchive merged = CloudExport::merged(restored, local);
        require(isAscending(merged.days) && merged.creditedStops == local.creditedStops);
        require(merged.tools.contains("Claude Code") && merged.metrics.contains("stops"));
        require(CloudExport::merged(merged, local) == merged);
        require(FlameArchive::decode(merged.encode()) == merged);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    auto collection = CloudExport::restoreCollection(text);
    const auto days = CloudExport::restoreDays(text);
    const auto battery = CloudExport::restoreBattery(text);
    require(days.has_value() == battery.has_value() && (days || !collection));
    if (!days) return 0;
    require(isAscending(*days));
    for (const FlameDay& day : *days)
        require(day.stops >= 0 && day.ghosts >= 0 && day.folders >= 0);
    require(BatteryArchive::decode(battery->encode()) == battery);
    require(std::ranges::is_sorted(battery->points, {}, &BatteryPoint::date));
    require(std::ranges::is_sorted(battery->sessions, {}, &BatterySession::start));
    if (!collection) return 0;

    collection->days = *days;
    require(FlameArchive::decode(collection->encode()) == collection);
    requireMerge(*collection);
    const auto items = CloudExport::archive(*collection, *battery, std::nullopt, Date{800'000'000});
    require(items.has_value());
    const std::string again = asRecords(*items);
    const auto twice = CloudExport::restoreCollection(again);
    require(twice && twice->timezone == collection->timezone && twice->metrics == collection->metrics);
    require(twice->tools == collection->tools && twice->inspectedKinds == collection->inspectedKinds);
    require(twice->unlocked.size() == collection->unlocked.size());
    require(CloudExport::restoreBattery(again)->points.size() == battery->points.size());
    return 0;
}
