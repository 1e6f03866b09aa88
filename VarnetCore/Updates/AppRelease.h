#pragma once

#include "VarnetCore/Base/Date.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// How a release stands to the program that runs.
enum class ReleaseAvailability { current, available, requiresNewerSystem };

/// "current", "available" or "requiresNewerSystem".
std::string_view rawValue(ReleaseAvailability availability) noexcept;

/// Why a manifest is refused.
enum class ReleaseError {
    invalidManifest, ///< it says what it must not say
    decoding,        ///< it is no manifest at all
    invalidResponse, ///< the server has not answered with one
};

/// The components of a version such as "1.2" or "1.2.3"; empty for anything else.
std::optional<std::vector<int>> numericVersion(std::string_view text);

/// A release as the project's site announces it.
struct AppRelease {
    std::int64_t schemaVersion = 0;
    std::string version;
    std::int64_t build = 0;
    std::string minimumSystemVersion;
    std::string architecture;
    std::string downloadURL; ///< of the archive
    std::string sha256;      ///< of the archive, 64 small hexadecimal digits
    std::vector<std::string> notes;
    std::optional<std::string> installerURL;
    std::optional<std::string> installerSHA256; ///< there when the address is

    /// A manifest of more bytes is refused unread.
    static constexpr std::size_t mostBytes = 65'536;

    /// Reads a manifest. It comes from a hostile world: any deviation refuses the whole of it.
    /// @param host the only one that releases may come from; empty: none may
    static std::expected<AppRelease, ReleaseError> decode(std::string_view data, std::string_view host);

    ReleaseAvailability availability(std::int64_t currentBuild, std::string_view systemVersion) const;

    friend bool operator==(const AppRelease&, const AppRelease&) = default;
};

namespace UpdateSchedule {

/// Seconds from one automatic check to the next.
constexpr double interval = 86'400;

/// Whether it is time to look for a release. A clock that was set back makes it time.
bool isDue(bool automatic, std::optional<Date> lastAttempt, Date now) noexcept;

} // namespace UpdateSchedule
} // namespace varnet
