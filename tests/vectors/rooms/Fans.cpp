#include "VarnetCore/Sensors/FanStateMachine.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

template <typename Value, typename Write>
Json orNull(const std::optional<Value>& value, Write write) {
    return value ? Json(write(*value)) : Json(nullptr);
}

double seconds(Date date) {
    return date.seconds;
}

int number(FanLevel level) {
    return static_cast<int>(level);
}

double real(const Json& json, const char* key) {
    return numberOf(at(json, key)).value_or(0);
}

Fan readFan(const Json& json) {
    return {readInteger<int>(json, "id").value_or(0), real(json, "rpm"), numberOf(at(json, "maximum"))};
}

std::vector<Fan> readFanList(const Json& list) {
    std::vector<Fan> fans;
    for (const Json& fan : list)
        fans.push_back(readFan(fan));
    return fans;
}

/// JSON has no word for what is no number.
Json writtenReal(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
    return value;
}

Json written(const FanSnapshot& snapshot) {
    Json fans = Json::array();
    for (const Fan& fan : snapshot.fans)
        fans.push_back(
            {{"id", fan.id}, {"rpm", writtenReal(fan.rpm)}, {"maximum", orNull(fan.maximum, writtenReal)}});
    return {{"availability", rawValue(snapshot.availability)},
            {"fans", std::move(fans)},
            {"level", number(snapshot.level)},
            {"spunUp", snapshot.spunUp},
            {"measuredAt", orNull(snapshot.measuredAt, seconds)}};
}

Json ratio(const Json& input) {
    return orNull(readFan(input).ratio(), [](double value) { return value; });
}

Json fastest(const Json& input) {
    FanSnapshot snapshot = readFans(input);
    snapshot.fans = readFanList(at(input, "fans"));
    return orNull(snapshot.fastest(), [](double value) { return value; });
}

Json machine(const Json& input) {
    FanStateMachine fans;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        Json snapshot;
        if (readText(step, "call") == "reset") {
            fans.reset();
        } else {
            snapshot = written(fans.update(readFanList(at(step, "fans")), readFans(step).availability,
                                           readDate(step, "now").value_or(Date{})));
        }
        results.push_back({{"snapshot", std::move(snapshot)},
                           {"state",
                            {{"level", number(fans.level)},
                             {"candidate", orNull(fans.candidate, number)},
                             {"candidateSince", orNull(fans.candidateSince, seconds)},
                             {"hadZero", fans.hadZero},
                             {"positiveSince", orNull(fans.positiveSince, seconds)},
                             {"lastDate", orNull(fans.lastDate, seconds)}}}});
    }
    return results;
}

const Room room{
    {"Fan.ratio", answering(ratio)},
    {"FanSnapshot.fastest", answering(fastest)},
    {"FanStateMachine", answering(machine)},
};

} // namespace
} // namespace varnet::vectors
