#include "VarnetCore/Battery/BatteryAppImpact.h"
#include "VarnetCore/Battery/EnergyImpactSampler.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json runStep(EnergyImpactSampler& sampler, const Json& step) {
    const std::string call = readText(step, "call");
    if (call == "sample") {
        const EnergyImpact impact = sampler.sample(
            readIdentity(at(step, "id")), readInteger<std::uint64_t>(step, "cpu").value_or(0),
            readInteger<std::uint64_t>(step, "wakeups").value_or(0), readDate(step, "at").value_or(Date{}));
        return {{"current", writtenOrNull(impact.current)}, {"average", writtenOrNull(impact.average)}};
    }
    if (call == "retain") {
        sampler.retain(readIdentities(at(step, "ids")));
    } else if (call == "reset") {
        sampler.reset();
    } else {
        throw std::runtime_error("unknown call " + call);
    }
    return nullptr;
}

Json sample(const Json& input) {
    EnergyImpactSampler sampler;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        Json result = runStep(sampler, step);
        results.push_back({{"result", std::move(result)}, {"entries", sampler.entries()}});
    }
    return results;
}

Json average(const Json& input) {
    const BatteryAppImpact impact{"", "", readNumber(input, "scoreSeconds").value_or(0), false};
    return writtenOrNull(impact.average(readNumber(input, "seconds").value_or(0)));
}

const Room room{
    {"EnergyImpactSampler", answering(sample)},
    {"BatteryAppImpact.average", answering(average)},
};

} // namespace
} // namespace varnet::vectors
