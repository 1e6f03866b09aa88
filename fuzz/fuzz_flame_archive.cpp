// Whatever decodes is written and read back unchanged, and a day counts in it whatever it holds.

#include "VarnetCore/Hall/FlameCollection.h"
#include "VarnetCore/Hall/FlameWeek.h"

#include <cstddef>
#include <cstdint>
#include <limits>

#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace varnet;
    const auto archive = FlameArchive::decode({reinterpret_cast<const char*>(data), size});
    if (!archive) return 0;
    require(FlameArchive::decode(archive->encode()) == archive);

    FlameCollection collection(*archive);
    collection.cleaned(1, std::numeric_limits<std::uint64_t>::max(), archive->started);
    const auto& after = collection.archive();
    require(after.days[collection.dayIndex(archive->started)].folders != 0 || !archive->days.empty());
    const FlameWeek week = FlameWeek::containing(after, archive->started);
    require(week.start < week.end && week.stops() <= std::numeric_limits<std::int64_t>::max());
    require(FlameArchive::decode(after.encode()).has_value());
    return 0;
}
