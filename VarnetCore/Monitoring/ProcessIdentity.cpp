#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <array>
#include <charconv>

namespace varnet {

std::string ProcessIdentity::id() const {
    // 20 + 11 + 20 digits at most, and two colons.
    std::array<char, 53> text;
    char* const end = text.data() + text.size();
    char* at = std::to_chars(text.data(), end, boot).ptr;
    *at++ = ':';
    at = std::to_chars(at, end, pid).ptr;
    *at++ = ':';
    at = std::to_chars(at, end, start).ptr;
    return {text.data(), at};
}

} // namespace varnet
