// Whatever decodes is written and read back unchanged.

#include "VarnetCore/Monitoring/SessionArchive.h"

#include <cstddef>
#include <cstdint>

#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using varnet::SessionArchive;
    auto archive = SessionArchive::decode({reinterpret_cast<const char*>(data), size});
    if (!archive) return 0;
    varnet::require(SessionArchive::decode(archive->encode()) == archive);
    archive->prune(varnet::Date{815'000'000}, {});
    varnet::require(SessionArchive::decode(archive->encode()).has_value());
    return 0;
}
