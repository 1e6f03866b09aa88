#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <array>
#include <charconv>
#include <concepts>
#include <limits>

namespace varnet {
namespace {

template <std::integral Integer>
void append(std::string& text, Integer number) {
    std::array<char, std::numeric_limits<Integer>::digits10 + 2> digits; // a sign and the digit that may vary
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

} // namespace

std::string ProcessIdentity::id() const {
    std::string text;
    text.reserve(40); // ten digits of boot, seven of pid, sixteen of start: one allocation
    append(text, boot);
    text += ':';
    append(text, pid);
    text += ':';
    append(text, start);
    return text;
}

} // namespace varnet
