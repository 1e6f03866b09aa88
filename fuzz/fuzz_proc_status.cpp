#include "probes/linux/ParseProcess.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

/// Without usage there is no figure; memory is whole kilobytes; lines that no key of ours begins change
/// nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto resident = probes::parseProcStatm(text))
        require(text.find_first_of("0123456789") != text.npos);
    const auto status = probes::parseProcStatus(text);
    if (!status) return 0;
    require(status->processID >= 0);
    require(status->memory % 1024 == 0);
    require(status->hasUsage || (status->memory == 0 && status->wakeups == 0));
    require(text.find("Tgid:") != text.npos && text.find("Uid:") != text.npos);

    const auto again = probes::parseProcStatus("Groups:\t1 2 3\n" + std::string(text) + "\nSeccomp:\t0\n");
    require(again && again->processID == status->processID && again->uid == status->uid);
    require(again->memory == status->memory && again->wakeups == status->wakeups);
    require(again->hasUsage == status->hasUsage);
    return 0;
}
