#include "VarnetCore/Findings/StopPlanner.h"

#include "VarnetCore/Monitoring/Detector.h"

#include <string_view>

namespace varnet::StopPlanner {

bool isProtected(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID) {
    if (process.uid != uid || process.isSystem) return true;
    if (process.id.pid < 2 || process.id.pid == selfPID) return true;
    // A helper that merely belongs to an application is not caught here, only its main process.
    if (process.application && process.application->pid == process.id.pid) return true;
    const std::string_view executable = process.executable;
    // Python's framework runs ordinary scripts from inside a bundle of its own.
    if (executable.find(".app/") != std::string_view::npos &&
        executable.find("/Python.app/Contents/") == std::string_view::npos) {
        return true;
    }
    return !Detector::agentName(process.name, executable, process.arguments, {}).empty();
}

bool canStopProcess(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID) {
    if (isProtected(process, uid, selfPID)) return false;
    return process.isDevelopment() || process.project ||
           (process.attribution && process.attribution->confidence == Confidence::observed);
}

} // namespace varnet::StopPlanner
