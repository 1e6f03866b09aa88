#include "VarnetCore/Updates/AppRelease.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>

namespace varnet {

namespace {

using Json = nlohmann::json;

constexpr std::int64_t knownSchema = 1;
constexpr std::size_t mostNotes = 12;
constexpr std::size_t longestNote = 500; ///< characters
constexpr std::size_t digestLength = 64;
constexpr std::size_t longestComponent = 5; ///< digits

/// Takes a field; false when it has another type, or is missing and must not be.
bool take(const Json& object, const char* key, std::string& text) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) return false;
    text = found->get<std::string>();
    return true;
}

bool take(const Json& object, const char* key, std::optional<std::string>& text) {
    const auto found = object.find(key);
    if (found == object.end() || found->is_null()) return true;
    return take(object, key, text.emplace());
}

bool take(const Json& object, const char* key, std::int64_t& number) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer()) return false;
    if (found->is_number_unsigned() &&
        found->get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return false;
    number = found->get<std::int64_t>();
    return true;
}

bool take(const Json& object, const char* key, std::vector<std::string>& list) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_array()) return false;
    for (const Json& item : *found) {
        if (!item.is_string()) return false;
        list.push_back(item.get<std::string>());
    }
    return true;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

bool isNote(const std::string& note) {
    return !note.empty() && characters(note) <= longestNote;
}

bool isDigest(std::string_view text) {
    return text.size() == digestLength &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// Scheme, host and path have one spelling each, and nothing else may be there: so has the address.
bool isAddress(const std::string& url, std::string_view host, const AppRelease& release, const char* suffix) {
    return !host.empty() && url == "https://" + std::string(host) + "/downloads/Varnet-" + release.version +
                                       "-" + std::to_string(release.build) + suffix;
}

bool isValid(const AppRelease& release, std::string_view host) {
    if (release.schemaVersion != knownSchema || release.build < 1) return false;
    if (!numericVersion(release.version) || !numericVersion(release.minimumSystemVersion)) return false;
    if (release.architecture != "arm64") return false;
    if (release.notes.size() > mostNotes || !std::ranges::all_of(release.notes, isNote)) return false;
    if (!isDigest(release.sha256) || !isAddress(release.downloadURL, host, release, ".zip")) return false;
    if (release.installerURL.has_value() != release.installerSHA256.has_value()) return false;
    return !release.installerURL ||
           (isDigest(*release.installerSHA256) && isAddress(*release.installerURL, host, release, ".dmg"));
}

} // namespace

std::string_view rawValue(ReleaseAvailability availability) noexcept {
    switch (availability) {
    case ReleaseAvailability::current:
        return "current";
    case ReleaseAvailability::available:
        return "available";
    case ReleaseAvailability::requiresNewerSystem:
        break;
    }
    return "requiresNewerSystem";
}

std::optional<std::vector<int>> numericVersion(std::string_view text) {
    std::vector<int> components;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('.', begin), text.size());
        const std::string_view digits = text.substr(begin, end - begin);
        if (digits.empty() || digits.size() > longestComponent ||
            digits.find_first_not_of("0123456789") != std::string_view::npos)
            return std::nullopt;
        int& component = components.emplace_back();
        std::from_chars(digits.data(), digits.data() + digits.size(), component);
        begin = end + 1;
    }
    if (components.size() < 2 || components.size() > 3) return std::nullopt;
    return components;
}

std::expected<AppRelease, ReleaseError> AppRelease::decode(std::string_view data, std::string_view host) {
    if (data.size() > mostBytes) return std::unexpected(ReleaseError::invalidManifest);
    // The reader would take a byte-order mark for nothing.
    if (data.starts_with("\xEF\xBB\xBF")) return std::unexpected(ReleaseError::decoding);
    const Json json = Json::parse(data, nullptr, false);
    AppRelease release;
    const bool read = json.is_object() && take(json, "schemaVersion", release.schemaVersion) &&
                      take(json, "version", release.version) && take(json, "build", release.build) &&
                      take(json, "minimumSystemVersion", release.minimumSystemVersion) &&
                      take(json, "architecture", release.architecture) &&
                      take(json, "downloadURL", release.downloadURL) &&
                      take(json, "sha256", release.sha256) && take(json, "notes", release.notes) &&
                      take(json, "installerURL", release.installerURL) &&
                      take(json, "installerSHA256", release.installerSHA256);
    if (!read) return std::unexpected(ReleaseError::decoding);
    if (!isValid(release, host)) return std::unexpected(ReleaseError::invalidManifest);
    return release;
}

ReleaseAvailability AppRelease::availability(std::int64_t currentBuild,
                                             std::string_view systemVersion) const {
    if (currentBuild >= build) return ReleaseAvailability::current;
    const auto system = numericVersion(systemVersion);
    const auto minimum = numericVersion(minimumSystemVersion);
    // A list that is the beginning of the other sorts first: 26.0 does not satisfy 26.0.0.
    if (!system || !minimum || *system < *minimum) return ReleaseAvailability::requiresNewerSystem;
    return ReleaseAvailability::available;
}

bool UpdateSchedule::isDue(bool automatic, std::optional<Date> lastAttempt, Date now) noexcept {
    if (!automatic) return false;
    if (!lastAttempt) return true;
    const double since = now - *lastAttempt;
    return since < 0 || since >= interval;
}

} // namespace varnet
