// Whatever decodes is written and read back unchanged, and stays readable when it has been pruned.

#include "VarnetCore/Battery/BatteryArchive.h"

#include <cstddef>
#include <cstdint>

#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using varnet::BatteryArchive;
    auto archive = BatteryArchive::decode({reinterpret_cast<const char*>(data), size});
    if (!archive) return 0;
    varnet::require(BatteryArchive::decode(archive->encode()) == archive);
    archive->prune(varnet::Date{815'000'000});
    varnet::require(archive->points.size() <= BatteryArchive::mostPoints);
    varnet::require(BatteryArchive::decode(archive->encode()) == archive);
    return 0;
}
