// Whatever decodes keeps to every limit that the rest of the program relies on: bounded notes, digests that
// are digests, addresses that can only lead to the one host, and a file name that stays in its folder.

#include "VarnetCore/Updates/AppRelease.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

namespace {

constexpr std::string_view host = "releases.example.test";

bool isDigest(const std::string& text) {
    return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

/// The address behind the folder of downloads: a plain file name.
bool leadsHome(const std::string& url, std::string_view suffix) {
    const std::string folder = "https://" + std::string(host) + "/downloads/Varnet-";
    if (!url.starts_with(folder) || !url.ends_with(suffix)) return false;
    const std::string_view rest = std::string_view(url).substr(folder.size());
    return rest.find_first_not_of("0123456789.-zipdmg") == std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using varnet::AppRelease;
    using varnet::ReleaseAvailability;
    using varnet::require;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    require(!AppRelease::decode(text, {}));
    const auto release = AppRelease::decode(text, host);
    if (!release) return 0;
    require(size <= AppRelease::mostBytes);
    require(release->schemaVersion == 1 && release->build >= 1 && release->notes.size() <= 12);
    for (const std::string& note : release->notes)
        require(!note.empty() && note.size() <= 4 * 500);
    require(isDigest(release->sha256) && leadsHome(release->downloadURL, ".zip"));
    require(release->installerURL.has_value() == release->installerSHA256.has_value());
    if (release->installerURL)
        require(isDigest(*release->installerSHA256) && leadsHome(*release->installerURL, ".dmg"));
    require(release->availability(release->build, "1.0") == ReleaseAvailability::current);
    const bool always =
        varnet::numericVersion(release->minimumSystemVersion) > varnet::numericVersion("99999.99999");
    require(always ||
            release->availability(release->build - 1, "99999.99999.99999") == ReleaseAvailability::available);
    return 0;
}
