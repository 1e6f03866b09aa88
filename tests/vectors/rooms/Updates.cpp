#include "VarnetCore/Updates/AppRelease.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

#include <openssl/evp.h>

namespace varnet::vectors {
namespace {

Json optionalText(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json();
}

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
    if (const auto size = readInteger<std::size_t>(input, "padToBytes")) bytes.resize(*size, ' ');
    const auto release = AppRelease::decode(bytes, "releases.example.test");
    const Json& expected = expectationOf(vector);
    if (!release) {
        const std::string got = release.error() == ReleaseError::decoding ? "decoding" : "invalidManifest";
        if (readText(expected, "error") == "any") return std::nullopt;
        return firstDifference(expected, {{"error", got}}, {});
    }
    return firstDifference(expected,
                           {{"release",
                             {{"schemaVersion", release->schemaVersion},
                              {"build", release->build},
                              {"version", release->version},
                              {"minimumSystemVersion", release->minimumSystemVersion},
                              {"architecture", release->architecture},
                              {"sha256", release->sha256},
                              {"notes", release->notes},
                              {"downloadURL", release->downloadURL},
                              {"installerURL", optionalText(release->installerURL)},
                              {"installerSHA256", optionalText(release->installerSHA256)}}}},
                           {});
}

Json availability(const Json& input) {
    AppRelease release;
    release.build = readInteger<std::int64_t>(input, "build").value_or(0);
    release.minimumSystemVersion = readText(input, "minimumSystemVersion");
    return rawValue(release.availability(readInteger<std::int64_t>(input, "currentBuild").value_or(0),
                                         readText(input, "systemVersion")));
}

Json components(const Json& input) {
    const auto numbers = numericVersion(readText(input, "text"));
    return numbers ? Json(*numbers) : Json();
}

Json isDue(const Json& input) {
    return UpdateSchedule::isDue(readFlag(input, "automatic"), readDate(input, "lastAttempt"),
                                 readDate(input, "now").value_or(Date{}));
}

const Room room{
    {"AppRelease.decode", decode},
    {"numericVersion", answering(components)},
    {"availability", answering(availability)},
    {"UpdateSchedule.isDue", answering(isDue)},
};

} // namespace
} // namespace varnet::vectors
