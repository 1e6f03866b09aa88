// A process's name, executable and arguments, with a NUL between: what it is called does not hang on capital
// letters, an agent is development, and the name that leaves this machine is short, plain text.

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Cloud/CloudExport.h"
#include "VarnetCore/Monitoring/Detector.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"

using namespace varnet;

namespace {

std::string raised(std::string text) {
    for (char& byte : text)
        if (byte >= 'a' && byte <= 'z') byte = static_cast<char>(byte - 'a' + 'A');
    return text;
}

void requireNames(const std::string& path) {
    const std::string base = Detector::basename(path);
    require(base.empty() == path.empty() && Detector::basename(base) == base);
    require(base.find('/') == std::string::npos || path.find_first_not_of('/') == std::string::npos);
    if (const auto bundle = Detector::applicationPath(path))
        require(path.starts_with(*bundle + "/") && bundle->ends_with(".app"));

    const std::string name = CloudExport::name(path);
    const auto characters = std::ranges::count_if(
        name, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; });
    require(!name.empty() && characters <= 120 && isValidUtf8(name));
    require(std::ranges::none_of(name, [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F || byte == '/' || byte == '\\';
    }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> pieces;
    while (!text.empty()) {
        pieces.emplace_back(text.substr(0, text.find('\0')));
        text.remove_prefix(std::min(pieces.back().size() + 1, text.size()));
    }
    pieces.resize(std::max<std::size_t>(pieces.size(), 2));
    const std::string name = pieces[0];
    const std::string executable = pieces[1];
    const std::vector<std::string> arguments(pieces.begin() + 2, pieces.end());

    requireNames(executable);
    const auto agent = Detector::agent(name, executable, arguments, {});
    require(agent.value_or("") == Detector::agentName(name, executable, arguments, {}));
    const bool development = Detector::isDevelopment(executable, name, arguments);
    require(!agent || development);
    const auto framework = Detector::framework(arguments, name);
    const bool bundled = executable.find(".app/") != std::string::npos;
    require(!framework || development || bundled);
    if (raised(executable).find(".APP/") != std::string::npos) return 0; // bundles are told by their letters

    std::vector<std::string> loud;
    std::ranges::transform(arguments, std::back_inserter(loud), raised);
    require(Detector::agent(raised(name), raised(executable), loud, {}) == agent);
    require(Detector::framework(loud, raised(name)) == framework);
    require(Detector::isDevelopment(raised(executable), raised(name), loud) == development);
    return 0;
}
