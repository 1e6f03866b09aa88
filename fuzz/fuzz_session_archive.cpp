// Whatever decodes is written and read back unchanged.

#include "VarnetCore/Monitoring/SessionArchive.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using varnet::SessionArchive;
    auto archive = SessionArchive::decode({reinterpret_cast<const char*>(data), size});
    if (!archive) return 0;
    if (SessionArchive::decode(archive->encode()) != archive) std::abort();
    archive->prune(varnet::Date{815'000'000}, {});
    if (!SessionArchive::decode(archive->encode())) std::abort();
    return 0;
}
