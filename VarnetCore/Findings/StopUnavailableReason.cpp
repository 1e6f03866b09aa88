#include "VarnetCore/Findings/StopUnavailableReason.h"

#include "VarnetCore/Findings/GroupServices.h"
#include "VarnetCore/Monitoring/Detector.h"

#include <algorithm>
#include <string_view>

namespace varnet {
namespace {

constexpr std::string_view thisProgram = "This is Varnet. To quit it, use Quit in the app menu.";
constexpr std::string_view systemProcess = "System process. macOS needs it, so it can’t be stopped here.";

} // namespace

std::string stopUnavailableReason(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID) {
    if (process.id.pid == selfPID) return std::string(thisProgram);
    if (process.isSystem || process.id.pid < 2) return std::string(systemProcess);
    if (process.uid != uid) {
        return "This process belongs to another user. It can’t be stopped from your account.";
    }
    if (process.application) {
        return "Part of " + process.application->name +
               ". Quit the app from the Apps list instead of stopping this process separately.";
    }
    if (!Detector::agentName(process.name, process.executable, process.arguments, {}).empty()) {
        return "This is an AI agent coordinating your work. Stop it from its own app or terminal.";
    }
    return "This process can’t be stopped separately here. Quit the app or terminal that started it.";
}

std::string stopUnavailableReason(const ApplicationGroup& group, std::span<const Service> services,
                                  std::uint32_t uid, std::int32_t selfPID) {
    switch (group.kind) {
    case GroupKind::system:
        return std::string(systemProcess);
    case GroupKind::project:
        return std::ranges::any_of(services, [&](const Service& service) { return worksIn(service, group); })
                   ? "This project’s servers belong to protected processes. Stop them from the app that "
                     "started them."
                   : "No running servers to stop in this project. Editors and AI agents stay open.";
    case GroupKind::application:
    case GroupKind::unassigned:
        break;
    }
    if (group.application && group.application->pid == selfPID) return std::string(thisProgram);
    if (group.processes.empty()) return "This item is no longer running. Wait for the list to refresh.";
    return stopUnavailableReason(*group.processes.front(), uid, selfPID);
}

} // namespace varnet
