#include "VarnetCore/Monitoring/SessionArchive.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

SessionArchive readArchive(const Json& json) {
    SessionArchive archive;
    for (const Json& entry : at(json, "lineage")) {
        archive.lineage.push_back({readIdentity(at(entry, "identity")),
                                   readAttribution(at(entry, "attribution")),
                                   readDate(entry, "lastSeen").value_or(Date{})});
    }
    for (const Json& action : at(json, "actions")) {
        const auto id = Uuid::fromText(readText(action, "id"));
        if (!id) throw std::runtime_error("no UUID: " + action.dump());
        archive.actions.push_back({*id, readDate(action, "date").value_or(Date{}), readText(action, "title"),
                                   readText(action, "detail")});
    }
    for (const auto& [finding, date] : at(json, "ignored").items()) {
        archive.ignored[finding] = Date{numberOf(date).value()};
    }
    for (const auto& [key, choice] : at(json, "roastChoices").items()) {
        archive.roastChoices[key] = choice.get<std::int64_t>();
    }
    return archive;
}

/// Written here once more, so that an encoder and a decoder with the same fault cannot hide it.
Json writtenArchive(const SessionArchive& archive) {
    Json json{{"lineage", Json::array()},
              {"actions", Json::array()},
              {"ignored", Json::object()},
              {"roastChoices", Json::object()}};
    for (const SavedLineage& entry : archive.lineage) {
        json["lineage"].push_back({{"identity", written(entry.identity)},
                                   {"attribution", written(entry.attribution)},
                                   {"lastSeen", entry.lastSeen.seconds}});
    }
    for (const HistoryRecord& action : archive.actions) {
        json["actions"].push_back({{"id", action.id.text()},
                                   {"date", action.date.seconds},
                                   {"title", action.title},
                                   {"detail", action.detail}});
    }
    for (const auto& [finding, date] : archive.ignored)
        json["ignored"][finding] = date.seconds;
    for (const auto& [key, choice] : archive.roastChoices)
        json["roastChoices"][key] = choice;
    return json;
}

Json decode(const Json& input) {
    const auto archive = SessionArchive::decode(readText(input, "json"));
    return {{"decoded", archive.has_value()},
            {"archive", writtenArchive(archive.value_or(SessionArchive{}))}};
}

Json encode(const Json& input) {
    return Json::parse(readArchive(at(input, "archive")).encode());
}

Json prune(const Json& input) {
    SessionArchive archive = readArchive(at(input, "archive"));
    archive.prune(readDate(input, "now").value_or(Date{}), readIdentities(at(input, "live")));
    return writtenArchive(archive);
}

/// The numbers of an archive are moments and integers.
Rules exact(bool exactKeys) {
    Rules rules;
    rules.exactNumbers = true;
    rules.exactKeys = exactKeys;
    return rules;
}

const Room room{
    {"SessionArchive.decode", answering(decode, exact(false))},
    {"SessionArchive.encode", answering(encode, exact(true))},
    {"SessionArchive.prune", answering(prune, exact(false))},
};

} // namespace
} // namespace varnet::vectors
