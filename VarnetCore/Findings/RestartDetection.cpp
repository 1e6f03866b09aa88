#include "VarnetCore/Findings/RestartDetection.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace varnet::RestartDetection {
namespace {

std::optional<std::string_view> projectRoot(const Service& service) noexcept {
    return service.project() ? std::optional<std::string_view>(service.project()->root) : std::nullopt;
}

std::optional<std::string_view> cwd(const Service& service) noexcept {
    return service.root->cwd ? std::optional<std::string_view>(*service.root->cwd) : std::nullopt;
}

bool isRestart(const Service& service, const StoppedService& stopped) {
    const ProcessSample& root = *service.root;
    return root.id != stopped.identity && root.id.startedAt() > stopped.date &&
           projectRoot(service) == stopped.project && cwd(service) == stopped.cwd &&
           service.name() == stopped.name;
}

Finding restarted(const Service& service) {
    Finding finding{"restarted:" + service.id(),
                    FindingKind::restarted,
                    service.name() + " started again",
                    "A new instance appeared after the reviewed service stopped. A parent tool may have "
                    "restarted it.",
                    std::nullopt,
                    {},
                    service.root->id.startedAt()};
    if (service.project()) finding.groupID = "project:" + service.project()->root;
    for (const SampleRef& member : service.members)
        finding.targets.push_back(member->id);
    return finding;
}

} // namespace

void remember(const Service& service, Date now, std::vector<StoppedService>& stopped) {
    const ProcessIdentity& identity = service.root->id;
    if (std::ranges::find(stopped, identity, &StoppedService::identity) != stopped.end()) return;
    stopped.push_back({service.name(), std::optional<std::string>(projectRoot(service)),
                       std::optional<std::string>(cwd(service)), identity, now});
}

void update(std::vector<StoppedService>& stopped, std::span<const Service> services,
            const std::map<std::string, Date>& ignored, Date now, std::vector<Finding>& findings) {
    std::erase_if(stopped, [now](const StoppedService& one) { return now - one.date > memory; });
    std::erase_if(findings, [](const Finding& one) { return one.kind == FindingKind::restarted; });
    for (const StoppedService& one : stopped) {
        // Only the first match speaks for a stop; one that is set aside is not replaced by another.
        const auto match =
            std::ranges::find_if(services, [&](const Service& service) { return isRestart(service, one); });
        if (match == services.end()) continue;
        Finding finding = restarted(*match);
        if (!ignored.contains(finding.id)) findings.insert(findings.begin(), std::move(finding));
    }
}

} // namespace varnet::RestartDetection
