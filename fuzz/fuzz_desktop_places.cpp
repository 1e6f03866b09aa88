// An environment ("NAME=value" lines) gives folders that are absolute, tidy, each once and not without end.

#include "VarnetApp/Platform/linux/DesktopPlaces.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

namespace {

void requireTidy(const std::vector<std::string>& folders) {
    require(folders.size() <= 256);
    require(std::set(folders.begin(), folders.end()).size() == folders.size());
    for (const std::string& folder : folders) {
        require(folder.starts_with('/') && (folder == "/" || !folder.ends_with('/')));
        require((folder + '/').find("/../") == std::string::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::map<std::string, std::string, std::less<>> environment;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const std::size_t equals = line.find('=');
        if (equals != line.npos) environment[std::string(line.substr(0, equals))] = line.substr(equals + 1);
    }
    const auto places = platform::DesktopPlaces::from([&](std::string_view name) {
        const auto found = environment.find(name);
        return found == environment.end() ? std::string() : found->second;
    });
    requireTidy(places.applications);
    requireTidy(places.programs);
    return 0;
}
