#include "probes/linux/ParseSystem.h"

#include "probes/linux/ParseText.h"

#include <array>

namespace varnet::probes {

std::optional<VNCPUTicks> parseCPUTicks(std::string_view procStat) noexcept {
    std::string_view line;
    while (nextLine(procStat, line)) {
        if (nextWord(line) != "cpu") continue;
        // user nice system idle iowait irq softirq steal; guest time is part of user already. Early kernels
        // end the line after idle.
        std::array<std::uint64_t, 8> ticks{};
        std::size_t count = 0;
        for (std::string_view word; count < ticks.size() && !(word = nextWord(line)).empty(); ++count) {
            const auto number = parseNumber(word);
            if (!number) return std::nullopt;
            ticks[count] = *number;
        }
        if (count < 4) return std::nullopt;
        return VNCPUTicks{.user = ticks[0],
                          .system = ticks[2] + ticks[5] + ticks[6] + ticks[7],
                          .idle = ticks[3] + ticks[4],
                          .nice = ticks[1]};
    }
    return std::nullopt;
}

std::optional<std::uint64_t> parseBootTime(std::string_view procStat) noexcept {
    std::string_view line;
    while (nextLine(procStat, line)) {
        if (nextWord(line) == "btime") return parseNumber(nextWord(line));
    }
    return std::nullopt;
}

std::optional<std::uint64_t> parseNewestPid(std::string_view loadAverage) noexcept {
    std::string_view line;
    if (!nextLine(loadAverage, line)) return std::nullopt;
    // Three averages and the running of all threads come before it.
    for (int word = 0; word < 4; ++word)
        nextWord(line);
    const auto newest = parseNumber(nextWord(line));
    return newest && nextWord(line).empty() ? newest : std::nullopt;
}

MemoryInfo parseMemoryInfo(std::string_view text) noexcept {
    MemoryInfo info;
    std::optional<std::uint64_t> swapTotal;
    std::optional<std::uint64_t> swapFree;
    constexpr std::array<std::string_view, 5> keys{"AnonPages", "Shmem", "SUnreclaim", "KernelStack",
                                                   "PageTables"};
    std::array<std::optional<std::uint64_t>, keys.size()> parts;

    std::string_view line;
    while (nextLine(text, line)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) continue;
        const std::string_view key = line.substr(0, colon);
        const auto bytes = parseKilobytes(line.substr(colon + 1));
        if (key == "SwapTotal") swapTotal = bytes;
        if (key == "SwapFree") swapFree = bytes;
        if (key == "Zswap") info.compressed = bytes;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (key == keys[i]) parts[i] = bytes;
        }
    }
    if (swapTotal && swapFree && *swapTotal >= *swapFree) info.swapUsed = *swapTotal - *swapFree;
    std::uint64_t sum = 0;
    for (const auto& part : parts) {
        if (!part || __builtin_add_overflow(sum, *part, &sum)) return info;
    }
    info.held = sum;
    return info;
}

std::optional<std::uint64_t> parseZramUsed(std::string_view mmStat) noexcept {
    nextWord(mmStat); // size of the data before compression
    nextWord(mmStat); // and after it, without the allocator's overhead
    return parseNumber(nextWord(mmStat));
}

} // namespace varnet::probes
