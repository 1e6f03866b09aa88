#include "VarnetCore/Flame/RoastEngine.h"
#include "VarnetCore/Flame/RoastLibrary.h"
#include "VarnetCore/Flame/RoastText.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

#include <algorithm>

namespace varnet::vectors {
namespace {

std::optional<std::string> optionalText(const Json& json, const char* key) {
    return at(json, key).is_null() ? std::nullopt : std::optional(readText(json, key));
}

RoastContext readContext(const Json& json) {
    return {readText(json, "topic"), optionalText(json, "groupID"), optionalText(json, "findingID")};
}

std::optional<RoastContext> readContextOrNone(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional(readContext(json));
}

Json context(const Json& input) {
    const RoastContext chosen = RoastSubject::choose(readSnapshot(at(input, "snapshot"), at(input, "pool")),
                                                     readContextOrNone(at(input, "presented")));
    return {{"topic", chosen.topic},
            {"groupID", writtenOrNull(chosen.groupID)},
            {"findingID", writtenOrNull(chosen.findingID)}};
}

Json order(const Json& input) {
    return RoastEngine::order(readInteger<std::int64_t>(input, "seed").value_or(0),
                              readInteger<std::int64_t>(input, "round").value_or(0),
                              readInteger<std::size_t>(input, "size").value_or(0));
}

RoastEngine engineWith(const Json& choices) {
    RoastEngine engine;
    RoastEngine::Choices map;
    for (const auto& [key, value] : choices.items())
        map[key] = value.get<std::int64_t>();
    engine.setChoices(std::move(map));
    return engine;
}

Json draw(const Json& input) {
    RoastEngine engine = engineWith(at(input, "choices"));
    Json indices = Json::array();
    for (const std::string& topic : readTexts(input, "topics")) {
        const std::string_view line = engine.draw(topic);
        const auto& bank = RoastLibrary::banks().find(RoastLibrary::bankFor(topic))->second;
        indices.push_back(std::ranges::find(bank, line) - bank.begin());
    }
    return {{"indices", std::move(indices)}, {"choices", engine.choices()}};
}

/// Whatever the new seed is, the deck must be that of the seed.
std::optional<Difference> checkRepair(const Json& vector) {
    const Json& input = vector.at("input");
    RoastEngine engine = engineWith(at(input, "choices"));
    engine.draw(readText(input, "topic"));
    const Json& expected = vector.at("expect");
    const std::int64_t seed = engine.choices().at("deck-v2:calm:seed");
    Json keys = Json::array();
    for (const auto& [key, value] : engine.choices())
        keys.push_back(key);
    const Json got{{"cursor", engine.choices().at("deck-v2:calm:cursor")},
                   {"keys", std::move(keys)},
                   {"inRange", seed >= expected.at("seedMin").get<std::int64_t>() &&
                                   seed <= expected.at("seedMax").get<std::int64_t>()},
                   {"last", engine.choices().at("deck-v2:calm:last")}};
    const auto first = RoastEngine::order(seed, 0, 100).front();
    return firstDifference({{"cursor", expected.at("cursor")},
                            {"keys", expected.at("keys")},
                            {"inRange", true},
                            {"last", first}},
                           got, {});
}

Json share(const Json& input) {
    return RoastText::share(readNumber(input, "value"));
}

Json explanation(const Json& input) {
    return RoastText::explanation(readContext(at(input, "displayed")), readContext(at(input, "measured")),
                                  readSnapshot(at(input, "snapshot"), at(input, "pool")));
}

Json observations(const Json& input) {
    return RoastText::observations(readContextOrNone(at(input, "displayed")),
                                   readSnapshot(at(input, "snapshot"), at(input, "pool")));
}

std::optional<Difference> checkMake(const Json& vector) {
    const Json& input = vector.at("input");
    const Json& expected = vector.at("expect");
    RoastEngine engine = engineWith(at(input, "choices"));
    std::size_t number = 0;
    for (const Json& step : at(input, "steps")) {
        MonitorSnapshot snapshot = readSnapshot(
            at(input, "snapshots").at(step.at("snapshot").get<std::size_t>()), at(input, "pool"));
        snapshot.date = readDate(step, "date").value_or(Date{});
        snapshot.fans.measuredAt = readDate(step, "measuredAt");
        const Roast roast =
            engine.make(snapshot, readFlag(step, "allowRotation") ? Rotation::allowed : Rotation::held);
        const Json got{{"id", roast.id},
                       {"headline", roast.headline},
                       {"explanation", roast.explanation},
                       {"observations", roast.observations},
                       {"mood", rawValue(roast.mood)},
                       {"topic", roast.topic},
                       {"characterTopic", roast.characterTopic}};
        if (auto difference = firstDifference(expected.at("results").at(number).at("roast"), got, {})) {
            difference->path = "step " + std::to_string(number) + " " + difference->path;
            return difference;
        }
        ++number;
    }
    return firstDifference(expected.at("choices"), Json(engine.choices()), {});
}

const Room room{
    {"RoastEngine.context", answering(context)},
    {"RoastEngine.order", answering(order)},
    {"RoastEngine.draw", answering(draw)},
    {"RoastEngine.draw.repair", checkRepair},
    {"RoastEngine.share", answering(share)},
    {"RoastEngine.explanation", answering(explanation)},
    {"RoastEngine.observations", answering(observations)},
    {"RoastEngine.make", checkMake},
};

} // namespace
} // namespace varnet::vectors
