#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Battery/BatteryArchive.h"

#include <utility>

namespace varnet {

using JsonReading::Json;
using JsonReading::read;
using JsonReading::readKey;
using JsonReading::written;

// The records' own reads, where the lists' reads look for them.

static bool read(const Json& json, BatteryState& value) {
    const auto* text = json.get_ptr<const Json::string_t*>();
    const auto state = text ? batteryState(*text) : std::nullopt;
    if (state) value = *state;
    return state.has_value();
}

static bool read(const Json& json, BatteryPoint& value) {
    return readKey(json, "date", value.date) && readKey(json, "charge", value.charge) &&
           readKey(json, "state", value.state) && readKey(json, "watts", value.watts) &&
           readKey(json, "segment", value.segment);
}

static bool read(const Json& json, BatteryHealthPoint& value) {
    return readKey(json, "date", value.date) && readKey(json, "capacity", value.capacity) &&
           readKey(json, "cycles", value.cycles);
}

static bool read(const Json& json, BatteryAppImpact& value) {
    return readKey(json, "id", value.id) && readKey(json, "name", value.name) &&
           readKey(json, "scoreSeconds", value.scoreSeconds) && readKey(json, "partial", value.partial);
}

static bool read(const Json& json, BatterySession& value) {
    return readKey(json, "id", value.id) && readKey(json, "start", value.start) &&
           readKey(json, "end", value.end) && readKey(json, "startCharge", value.startCharge) &&
           readKey(json, "endCharge", value.endCharge) &&
           readKey(json, "observedSeconds", value.observedSeconds) && readKey(json, "apps", value.apps);
}

namespace {

template <typename Value>
void writeKnown(Json& json, const char* key, const std::optional<Value>& value) {
    if (value) json[key] = *value;
}

Json writtenPoint(const BatteryPoint& point) {
    Json json{{"date", written(point.date)},
              {"charge", point.charge},
              {"state", rawValue(point.state)},
              {"segment", point.segment.text()}};
    writeKnown(json, "watts", point.watts);
    return json;
}

Json writtenHealth(const BatteryHealthPoint& point) {
    Json json{{"date", written(point.date)}, {"capacity", point.capacity}};
    writeKnown(json, "cycles", point.cycles);
    return json;
}

Json writtenSession(const BatterySession& session) {
    Json apps = Json::object();
    for (const auto& [id, app] : session.apps) {
        apps[id] = {
            {"id", app.id}, {"name", app.name}, {"scoreSeconds", app.scoreSeconds}, {"partial", app.partial}};
    }
    Json json{{"id", session.id.text()},
              {"start", written(session.start)},
              {"end", written(session.end)},
              {"observedSeconds", session.observedSeconds},
              {"apps", std::move(apps)}};
    writeKnown(json, "startCharge", session.startCharge);
    writeKnown(json, "endCharge", session.endCharge);
    return json;
}

template <typename Entry>
Json writtenList(const std::vector<Entry>& entries, Json (*one)(const Entry&)) {
    Json list = Json::array();
    for (const Entry& entry : entries)
        list.push_back(one(entry));
    return list;
}

} // namespace

std::string BatteryArchive::encode() const {
    return JsonReading::dumped({{"version", version},
                                {"points", writtenList(points, writtenPoint)},
                                {"health", writtenList(health, writtenHealth)},
                                {"sessions", writtenList(sessions, writtenSession)}});
}

std::optional<BatteryArchive> BatteryArchive::decode(std::string_view json) {
    const Json tree = JsonReading::parsed(json);
    std::optional<BatteryArchive> archive(std::in_place);
    if (!readKey(tree, "version", archive->version) || !readKey(tree, "points", archive->points) ||
        !readKey(tree, "health", archive->health) || !readKey(tree, "sessions", archive->sessions))
        archive.reset();
    return archive;
}

} // namespace varnet
