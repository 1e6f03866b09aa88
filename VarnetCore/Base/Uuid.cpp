#include "VarnetCore/Base/Uuid.h"

#include <sys/random.h>
#include <unistd.h>

#include <chrono>
#include <cstring>

namespace varnet {
namespace {

constexpr std::size_t textLength = 36;

constexpr bool isDash(std::size_t at) noexcept {
    return at == 8 || at == 13 || at == 18 || at == 23;
}

constexpr int hexValue(char c) noexcept {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// For a kernel that hands out no randomness: not secret, but different at every call and in every process.
void fillFromClock(std::array<std::uint8_t, 16>& bytes) noexcept {
    static std::uint64_t calls = 0;
    auto state = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    state ^= static_cast<std::uint64_t>(::getpid()) << 40U;
    state += ++calls;
    for (std::size_t half = 0; half < 2; ++half) {
        state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = (state ^ (state >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        mixed ^= mixed >> 31U;
        std::memcpy(bytes.data() + half * 8, &mixed, 8);
    }
}

} // namespace

Uuid Uuid::random() {
    Uuid uuid;
    if (::getentropy(uuid.bytes.data(), uuid.bytes.size()) != 0) fillFromClock(uuid.bytes);
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

std::optional<Uuid> Uuid::fromText(std::string_view text) noexcept {
    if (text.size() != textLength) return std::nullopt;
    Uuid uuid;
    std::size_t digit = 0;
    for (std::size_t at = 0; at < textLength; ++at) {
        if (isDash(at)) {
            if (text[at] != '-') return std::nullopt;
            continue;
        }
        const int value = hexValue(text[at]);
        if (value < 0) return std::nullopt;
        std::uint8_t& byte = uuid.bytes[digit / 2];
        byte = static_cast<std::uint8_t>((byte << 4U) | value);
        ++digit;
    }
    return uuid;
}

std::string Uuid::text() const {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : bytes) {
        if (isDash(text.size())) text += '-';
        text += digits[byte >> 4U];
        text += digits[byte & 0x0FU];
    }
    return text;
}

} // namespace varnet
