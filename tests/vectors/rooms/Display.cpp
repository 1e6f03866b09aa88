#include "VarnetCore/Base/Display.h"

#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json duration(const Json& input) {
    return Display::duration(readDate(input, "date").value_or(Date{}),
                             readDate(input, "now").value_or(Date{}));
}

const Room room{{"Display.duration", answering(duration)}};

} // namespace
} // namespace varnet::vectors
