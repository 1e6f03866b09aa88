#include "VarnetCore/Battery/BatteryAppImpact.h"
#include "VarnetCore/Battery/EnergyImpactSampler.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(EnergyImpact, current, average)

namespace {

Json runStep(EnergyImpactSampler& sampler, const Json& step) {
    const std::string call = readText(step, "call");
    if (call == "sample")
        return written(sampler.sample(read<ProcessIdentity>(step, "id"), read<std::uint64_t>(step, "cpu"),
                                      read<std::uint64_t>(step, "wakeups"), readDate(step, "at")));
    if (call == "retain") {
        sampler.retain(read<std::unordered_set<ProcessIdentity>>(step, "ids"));
    } else if (call == "reset") {
        sampler.reset();
    } else {
        throw std::runtime_error("unknown call " + call);
    }
    return nullptr;
}

Json sample(const Json& input) {
    EnergyImpactSampler sampler;
    return mapped(at(input, "steps"), [&](const Json& step) -> Json {
        Json result = runStep(sampler, step);
        return {{"result", std::move(result)}, {"entries", sampler.entries()}};
    });
}

auto average(const Json& input) {
    const BatteryAppImpact impact{"", "", read<double>(input, "scoreSeconds"), false};
    return impact.average(read<double>(input, "seconds"));
}

const Room room{
    {"EnergyImpactSampler", answering(sample)},
    {"BatteryAppImpact.average", answering(average)},
};

} // namespace
} // namespace varnet::vectors
