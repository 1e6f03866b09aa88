#include "VarnetCore/Flame/RoastEngine.h"
#include "VarnetCore/Flame/RoastLibrary.h"
#include "VarnetCore/Flame/RoastText.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RoastJson.h"

#include <algorithm>

namespace varnet::vectors {

VARNET_RECORD(RoastContext, topic, groupID, findingID)

namespace {

RoastContext context(const Json& input) {
    return RoastSubject::choose(read<MonitorSnapshot>(input, "snapshot"),
                                read<std::optional<RoastContext>>(input, "presented"));
}

Json order(const Json& input) {
    return RoastEngine::order(read<std::int64_t>(input, "seed"), read<std::int64_t>(input, "round"),
                              read<std::size_t>(input, "size"));
}

RoastEngine engineOf(const Json& input) {
    RoastEngine engine;
    engine.setChoices(read<RoastEngine::Choices>(input, "choices"));
    return engine;
}

Json draw(const Json& input) {
    RoastEngine engine = engineOf(input);
    Json indices = mapped(read<std::vector<std::string>>(input, "topics"), [&](const std::string& topic) {
        const std::string_view line = engine.draw(topic);
        const auto& bank = RoastLibrary::banks().find(RoastLibrary::bankFor(topic))->second;
        return std::ranges::find(bank, line) - bank.begin();
    });
    return {{"indices", std::move(indices)}, {"choices", engine.choices()}};
}

/// Whatever the new seed is, the deck must be that of the seed.
std::optional<Difference> checkRepair(const Json& vector) {
    const Json& input = vector.at("input");
    RoastEngine engine = engineOf(input);
    engine.draw(readText(input, "topic"));
    const Json& expected = vector.at("expect");
    const std::int64_t seed = engine.choices().at("deck-v2:calm:seed");
    const Json got{{"cursor", engine.choices().at("deck-v2:calm:cursor")},
                   {"keys", mapped(engine.choices(), [](const auto& choice) { return choice.first; })},
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

auto share(const Json& input) {
    return RoastText::share(read<std::optional<double>>(input, "value"));
}

auto explanation(const Json& input) {
    return RoastText::explanation(read<RoastContext>(input, "displayed"),
                                  read<RoastContext>(input, "measured"),
                                  read<MonitorSnapshot>(input, "snapshot"));
}

auto observations(const Json& input) {
    return RoastText::observations(read<std::optional<RoastContext>>(input, "displayed"),
                                   read<MonitorSnapshot>(input, "snapshot"));
}

std::optional<Difference> checkMake(const Json& vector) {
    const Json& input = vector.at("input");
    const Json& expected = vector.at("expect");
    RoastEngine engine = engineOf(input);
    std::size_t number = 0;
    const auto difference = eachStep(at(input, "steps"), [&](const Json& step) {
        MonitorSnapshot snapshot =
            read<MonitorSnapshot>(at(input, "snapshots").at(read<std::size_t>(step, "snapshot")));
        snapshot.date = readDate(step, "date");
        snapshot.fans.measuredAt = read<std::optional<Date>>(step, "measuredAt");
        const Roast roast =
            engine.make(snapshot, readFlag(step, "allowRotation") ? Rotation::allowed : Rotation::held);
        return firstDifference(expected.at("results").at(number++).at("roast"), written(roast), {});
    });
    if (difference) return difference;
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
