#include "VarnetCore/Base/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace varnet {

bool isValidUtf8(std::string_view bytes) noexcept {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const auto lead = static_cast<std::uint8_t>(bytes[at++]);
        if (lead < 0x80) continue;
        std::size_t more = 0;
        // The second byte's range is where overlong forms, surrogates and the upper end are told apart.
        std::uint8_t low = 0x80;
        std::uint8_t high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            more = 1;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            more = 2;
            if (lead == 0xE0) low = 0xA0;
            if (lead == 0xED) high = 0x9F;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            more = 3;
            if (lead == 0xF0) low = 0x90;
            if (lead == 0xF4) high = 0x8F;
        } else {
            return false;
        }
        for (; more > 0; --more) {
            if (at == bytes.size()) return false;
            const auto next = static_cast<std::uint8_t>(bytes[at++]);
            if (next < low || next > high) return false;
            low = 0x80;
            high = 0xBF;
        }
    }
    return true;
}

} // namespace varnet
