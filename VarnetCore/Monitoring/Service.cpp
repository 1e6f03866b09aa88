#include "VarnetCore/Monitoring/Service.h"

#include "VarnetCore/Monitoring/SampleSums.h"

namespace varnet {

std::vector<int> Service::ports() const {
    return SampleSums::ports(members);
}

std::optional<double> Service::cpu() const noexcept {
    return SampleSums::sum(members, &ProcessSample::averageCPU);
}

std::optional<std::uint64_t> Service::memory() const noexcept {
    return SampleSums::memory(members);
}

} // namespace varnet
