#include "VarnetCore/Monitoring/Detector.h"

#include "tests/vectors/Operations.h"

namespace varnet::vectors {
namespace {

std::string basename(const Json& input) {
    return Detector::basename(readText(input, "text"));
}

auto agent(const Json& input) {
    return Detector::agent(readText(input, "name"), readText(input, "executable"),
                           read<std::vector<std::string>>(input, "arguments"), readText(input, "bundleID"));
}

bool isDevelopment(const Json& input) {
    return Detector::isDevelopment(readText(input, "executable"), readText(input, "name"),
                                   read<std::vector<std::string>>(input, "arguments"));
}

auto framework(const Json& input) {
    return Detector::framework(read<std::vector<std::string>>(input, "arguments"), readText(input, "name"));
}

std::optional<std::string> applicationPath(const Json& input) {
    return Detector::applicationPath(readText(input, "path"));
}

bool isInstalledPluginDirectory(const Json& input) {
    return Detector::isInstalledPluginDirectory(readText(input, "path"));
}

const Room room{
    {"Detector.basename", answering(basename)},
    {"Detector.agent", answering(agent)},
    {"Detector.isDevelopment", answering(isDevelopment)},
    {"Detector.framework", answering(framework)},
    {"Detector.applicationPath", answering(applicationPath)},
    {"Detector.isInstalledPluginDirectory", answering(isInstalledPluginDirectory)},
};

} // namespace
} // namespace varnet::vectors
