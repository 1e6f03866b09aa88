#include "VarnetCore/Monitoring/ProcessSample.h"

#include "VarnetCore/Monitoring/Detector.h"

namespace varnet {

bool ProcessSample::isDevelopment() const {
    return Detector::isDevelopment(executable, name, arguments);
}

std::optional<std::string> ProcessSample::framework() const {
    return Detector::framework(arguments, name);
}

std::string ProcessSample::serviceName() const {
    if (auto known = framework()) return *std::move(known);
    return ports.empty() ? name.str() : name.str() + " server";
}

bool inSameProject(const ProcessSample& a, const ProcessSample& b) noexcept {
    if (a.project == b.project) return true;
    return a.project && b.project && a.project->root == b.project->root;
}

} // namespace varnet
