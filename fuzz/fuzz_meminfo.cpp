#include "probes/linux/ParseSystem.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

/// Figures are whole kilobytes, and none is told whose lines are missing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const probes::MemoryInfo info = probes::parseMemoryInfo(text);
    const auto names = [&](std::string_view key) { return text.find(key) != text.npos; };
    for (const auto& figure : {info.swapUsed, info.held, info.compressed}) {
        require(figure.value_or(0) % 1024 == 0);
    }
    require(!info.swapUsed || (names("SwapTotal:") && names("SwapFree:")));
    require(!info.compressed || names("Zswap:"));
    require(!info.held || (names("AnonPages:") && names("Shmem:") && names("SUnreclaim:") &&
                           names("KernelStack:") && names("PageTables:")));
    if (probes::parseZramUsed(text)) require(text.find_first_of("0123456789") != text.npos);
    return 0;
}
