#include "VarnetCore/Monitoring/RunningApplications.h"

#include "VarnetCore/Monitoring/Detector.h"

#include <optional>
#include <string>

namespace varnet {
namespace {

const RunningApplications::Ref noApplication;

} // namespace

RunningApplications::RunningApplications(std::span<const ApplicationDescriptor> applications,
                                         std::span<const ProcessSample> samples,
                                         const ProcessChains& chains) {
    std::vector<Ref> running;
    for (const ApplicationDescriptor& application : applications) {
        const std::int32_t main = chains.find(application.pid);
        if (main == ProcessChains::none) continue;
        const std::uint64_t start = samples[static_cast<std::size_t>(main)].id.start;
        if (application.processStart.value_or(start) != start) continue;
        running.push_back(std::make_shared<const ApplicationDescriptor>(application));
        byPath_.try_emplace(running.back()->bundlePath, running.back());
    }
    if (running.empty()) return;

    byPosition_.resize(samples.size());
    for (Ref& application : running) {
        const auto main = static_cast<std::size_t>(chains.find(application->pid));
        const std::optional<std::string> outer = Detector::applicationPath(application->bundlePath + '/');
        const Ref& enclosing = outer ? atPath(*outer) : noApplication;
        byPosition_[main] = enclosing ? enclosing : application;
    }
}

const RunningApplications::Ref& RunningApplications::ofMainProcess(std::int32_t position) const noexcept {
    return byPosition_.empty() ? noApplication : byPosition_[static_cast<std::size_t>(position)];
}

const RunningApplications::Ref& RunningApplications::atPath(std::string_view bundlePath) const noexcept {
    const auto found = byPath_.find(bundlePath);
    return found == byPath_.end() ? noApplication : found->second;
}

} // namespace varnet
