#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Monitoring/SessionArchive.h"

#include <utility>

namespace varnet {

using JsonReading::Json;
using JsonReading::read;
using JsonReading::readKey;
using JsonReading::written;

// The records' own reads, where the lists' reads look for them.

static bool read(const Json& json, Confidence& value) {
    const auto* text = json.get_ptr<const Json::string_t*>();
    const auto confidence = text ? confidenceFromRawValue(*text) : std::nullopt;
    if (confidence) value = *confidence;
    return confidence.has_value();
}

static bool read(const Json& json, ProcessIdentity& value) {
    return readKey(json, "boot", value.boot) && readKey(json, "pid", value.pid) &&
           readKey(json, "start", value.start);
}

static bool read(const Json& json, Attribution& value) {
    return readKey(json, "agent", value.agent) && readKey(json, "origin", value.origin) &&
           readKey(json, "confidence", value.confidence) && readKey(json, "reason", value.reason) &&
           readKey(json, "exitedAt", value.exitedAt);
}

static bool read(const Json& json, SavedLineage& value) {
    return readKey(json, "identity", value.identity) && readKey(json, "attribution", value.attribution) &&
           readKey(json, "lastSeen", value.lastSeen);
}

static bool read(const Json& json, HistoryRecord& value) {
    return readKey(json, "id", value.id) && readKey(json, "date", value.date) &&
           readKey(json, "title", value.title) && readKey(json, "detail", value.detail);
}

static Json written(const ProcessIdentity& identity) {
    return {{"boot", identity.boot}, {"pid", identity.pid}, {"start", identity.start}};
}

static Json written(const Attribution& attribution) {
    Json json{{"agent", attribution.agent},
              {"origin", written(attribution.origin)},
              {"confidence", rawValue(attribution.confidence)},
              {"reason", attribution.reason}};
    if (attribution.exitedAt) json["exitedAt"] = written(*attribution.exitedAt);
    return json;
}

std::string SessionArchive::encode() const {
    Json savedLineage = Json::array();
    for (const SavedLineage& entry : lineage) {
        savedLineage.push_back({{"identity", written(entry.identity)},
                                {"attribution", written(entry.attribution)},
                                {"lastSeen", written(entry.lastSeen)}});
    }
    Json savedActions = Json::array();
    for (const HistoryRecord& action : actions) {
        savedActions.push_back({{"id", action.id.text()},
                                {"date", written(action.date)},
                                {"title", action.title},
                                {"detail", action.detail}});
    }
    Json savedIgnored = Json::object();
    for (const auto& [finding, date] : ignored)
        savedIgnored[finding] = written(date);
    const Json archive{{"lineage", std::move(savedLineage)},
                       {"actions", std::move(savedActions)},
                       {"ignored", std::move(savedIgnored)},
                       {"roastChoices", Json(roastChoices)}};
    return JsonReading::dumped(archive);
}

std::optional<SessionArchive> SessionArchive::decode(std::string_view json) {
    const Json tree = JsonReading::parsed(json);
    std::optional<SessionArchive> archive(std::in_place);
    if (!readKey(tree, "lineage", archive->lineage) || !readKey(tree, "actions", archive->actions) ||
        !readKey(tree, "ignored", archive->ignored) ||
        !readKey(tree, "roastChoices", archive->roastChoices)) {
        archive.reset();
    }
    return archive;
}

} // namespace varnet
