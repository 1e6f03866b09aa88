#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Hall/FlameArchive.h"

#include <utility>

namespace varnet {

using JsonReading::Json;
using JsonReading::read;
using JsonReading::readKey;
using JsonReading::written;

// The records' own reads, where the lists' reads look for them.

static bool read(const Json& json, FlameRecord& value) {
    return readKey(json, "id", value.id) && readKey(json, "label", value.label) &&
           readKey(json, "value", value.value) && readKey(json, "date", value.date);
}

static bool read(const Json& json, FlameDay& value) {
    return readKey(json, "date", value.date) && readKey(json, "seconds", value.seconds) &&
           readKey(json, "peakCPU", value.peakCPU) && readKey(json, "stops", value.stops) &&
           readKey(json, "ghosts", value.ghosts) && readKey(json, "folders", value.folders) &&
           readKey(json, "trashBytes", value.trashBytes) && readKey(json, "topApp", value.topApp);
}

namespace {

Json writtenRecord(const FlameRecord& record) {
    return {
        {"id", record.id}, {"label", record.label}, {"value", record.value}, {"date", written(record.date)}};
}

Json writtenDay(const FlameDay& day) {
    Json json{{"date", written(day.date)}, {"seconds", day.seconds}, {"stops", day.stops},
              {"ghosts", day.ghosts},      {"folders", day.folders}, {"trashBytes", day.trashBytes}};
    if (day.peakCPU) json["peakCPU"] = *day.peakCPU;
    if (day.topApp) json["topApp"] = writtenRecord(*day.topApp);
    return json;
}

Json writtenDates(const std::set<Date>& dates) {
    Json list = Json::array();
    for (const Date date : dates)
        list.push_back(written(date));
    return list;
}

} // namespace

std::string FlameArchive::encode() const {
    Json unlockedJson = Json::object();
    for (const auto& [id, date] : unlocked)
        unlockedJson[id] = written(date);
    Json recordsJson = Json::object();
    for (const auto& [id, record] : records)
        recordsJson[id] = writtenRecord(record);
    Json daysJson = Json::array();
    for (const FlameDay& day : days)
        daysJson.push_back(writtenDay(day));
    return JsonReading::dumped({{"schema", schema},
                                {"started", written(started)},
                                {"timezone", timezone},
                                {"metrics", metrics},
                                {"unlocked", std::move(unlockedJson)},
                                {"records", std::move(recordsJson)},
                                {"days", std::move(daysJson)},
                                {"qualifiedDays", writtenDates(qualifiedDays)},
                                {"cleanupDays", writtenDates(cleanupDays)},
                                {"tools", tools},
                                {"inspectedKinds", inspectedKinds},
                                {"creditedStops", creditedStops}});
}

std::optional<FlameArchive> FlameArchive::decode(std::string_view json) {
    const Json tree = JsonReading::parsed(json);
    std::optional<FlameArchive> archive(std::in_place);
    const bool whole =
        readKey(tree, "schema", archive->schema) && readKey(tree, "started", archive->started) &&
        readKey(tree, "timezone", archive->timezone) && readKey(tree, "metrics", archive->metrics) &&
        readKey(tree, "unlocked", archive->unlocked) && readKey(tree, "records", archive->records) &&
        readKey(tree, "days", archive->days) && readKey(tree, "qualifiedDays", archive->qualifiedDays) &&
        readKey(tree, "cleanupDays", archive->cleanupDays) && readKey(tree, "tools", archive->tools) &&
        readKey(tree, "inspectedKinds", archive->inspectedKinds) &&
        readKey(tree, "creditedStops", archive->creditedStops);
    if (!whole) archive.reset();
    return archive;
}

} // namespace varnet
