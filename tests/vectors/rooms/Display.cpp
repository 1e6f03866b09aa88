#include "VarnetCore/Base/Display.h"

#include "tests/vectors/Operations.h"

namespace varnet::vectors {
namespace {

std::string duration(const Json& input) {
    return Display::duration(readDate(input, "date"), readDate(input, "now"));
}

const Room room{{"Display.duration", answering(duration)}};

} // namespace
} // namespace varnet::vectors
