#include "VarnetCore/Updates/AppRelease.h"
#include "tests/vectors/Operations.h"

#include <openssl/evp.h>

namespace varnet::vectors {

VARNET_RECORD(AppRelease, schemaVersion, build, version, minimumSystemVersion, architecture, sha256, notes,
              downloadURL, installerURL, installerSHA256)

namespace {

std::string fromBase64(const std::string& text) {
    std::string bytes(text.size(), '\0');
    const int length =
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                        reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
    if (length < 0) throw std::runtime_error("no base64");
    const auto padding = static_cast<std::size_t>(std::ranges::count(text, '='));
    bytes.resize(static_cast<std::size_t>(length) - padding);
    return bytes;
}

std::optional<Difference> decode(const Json& vector) {
    const Json& input = at(vector, "input");
    std::string bytes =
        at(input, "base64").is_null() ? readText(input, "text") : fromBase64(readText(input, "base64"));
    if (const auto size = read<std::size_t>(input, "padToBytes"); size > 0) bytes.resize(size, ' ');
    const auto release = AppRelease::decode(bytes, "releases.example.test");
    const Json& expected = expectationOf(vector);
    if (!release) {
        const std::string got = release.error() == ReleaseError::decoding ? "decoding" : "invalidManifest";
        if (readText(expected, "error") == "any") return std::nullopt;
        return firstDifference(expected, {{"error", got}}, {});
    }
    return firstDifference(expected, {{"release", written(*release)}}, {});
}

ReleaseAvailability availability(const Json& input) {
    return read<AppRelease>(input).availability(read<std::int64_t>(input, "currentBuild"),
                                                readText(input, "systemVersion"));
}

auto components(const Json& input) {
    return numericVersion(readText(input, "text"));
}

bool isDue(const Json& input) {
    return UpdateSchedule::isDue(readFlag(input, "automatic"),
                                 read<std::optional<Date>>(input, "lastAttempt"), readDate(input, "now"));
}

const Room room{
    {"AppRelease.decode", decode},
    {"numericVersion", answering(components)},
    {"availability", answering(availability)},
    {"UpdateSchedule.isDue", answering(isDue)},
};

} // namespace
} // namespace varnet::vectors
