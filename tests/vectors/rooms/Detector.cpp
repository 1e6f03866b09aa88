#include "VarnetCore/Monitoring/Detector.h"

#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json basename(const Json& input) {
    return Detector::basename(readText(input, "text"));
}

Json agent(const Json& input) {
    return writtenOrNull(Detector::agent(readText(input, "name"), readText(input, "executable"),
                                         readTexts(input, "arguments"), readText(input, "bundleID")));
}

Json isDevelopment(const Json& input) {
    return Detector::isDevelopment(readText(input, "executable"), readText(input, "name"),
                                   readTexts(input, "arguments"));
}

Json framework(const Json& input) {
    return writtenOrNull(Detector::framework(readTexts(input, "arguments"), readText(input, "name")));
}

Json applicationPath(const Json& input) {
    return writtenOrNull(Detector::applicationPath(readText(input, "path")));
}

Json isInstalledPluginDirectory(const Json& input) {
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
