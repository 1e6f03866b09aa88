#include "probes/linux/ParseProcess.h"

#include "probes/linux/ParseText.h"

#include <algorithm>
#include <limits>

namespace varnet::probes {

namespace {

constexpr std::uint64_t kernelThreadFlag = 0x00200000; // PF_KTHREAD
constexpr std::size_t maximumArguments = 16'384;
// Far above any uptime or any CPU time; more could not be turned into microseconds and nanoseconds.
constexpr std::uint64_t maximumTicks = std::numeric_limits<std::uint64_t>::max() / 2'000'000'000;

std::optional<std::int32_t> parsePid(std::string_view word) noexcept {
    const auto number = parseNumber(word);
    if (!number || *number > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

bool addUnlessTooLarge(std::uint64_t& sum, std::uint64_t value) noexcept {
    return !__builtin_add_overflow(sum, value, &sum);
}

} // namespace

std::optional<ProcStat> parseProcStat(std::string_view text) noexcept {
    // The name stands in parentheses and may hold any byte, parentheses included: it ends at the last one.
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::nullopt;

    ProcStat stat;
    std::string_view before = text.substr(0, open);
    const auto pid = parsePid(nextWord(before));
    if (!pid) return std::nullopt;
    stat.pid = *pid;
    stat.name = text.substr(open + 1, close - open - 1);

    std::string_view rest = text.substr(close + 1);
    const std::string_view state = nextWord(rest);
    if (state.size() != 1) return std::nullopt;
    stat.state = state.front();
    // Fields are numbered as in proc(5); the state is number 3.
    for (int field = 4; field <= 22; ++field) {
        const std::string_view word = nextWord(rest);
        if (word.empty()) return std::nullopt;
        const auto number = parseNumber(word);
        switch (field) {
        case 4:
            if (const auto parent = parsePid(word)) {
                stat.parent = *parent;
                break;
            }
            return std::nullopt;
        case 9:
            if (!number) return std::nullopt;
            stat.kernelThread = (*number & kernelThreadFlag) != 0;
            break;
        case 14:
        case 15:
            if (!number || *number > maximumTicks) return std::nullopt;
            stat.cpuTicks += *number;
            break;
        case 20:
            if (!number) return std::nullopt;
            stat.threads = *number;
            break;
        case 22:
            if (!number || *number > maximumTicks) return std::nullopt;
            stat.startTicks = *number;
            break;
        default:
            break;
        }
    }
    return stat;
}

std::optional<ProcStatus> parseProcStatus(std::string_view text) noexcept {
    ProcStatus status;
    std::optional<std::int32_t> processID;
    std::optional<std::uint32_t> uid;
    std::optional<std::uint64_t> wakeups;
    bool hasResidentSize = false;
    bool hasAnonymous = false;
    bool usable = true;

    std::string_view line;
    while (nextLine(text, line)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) continue;
        const std::string_view key = line.substr(0, colon);
        std::string_view value = line.substr(colon + 1);
        if (key == "Tgid") {
            processID = parsePid(nextWord(value));
        } else if (key == "Uid") {
            nextWord(value); // the real user; the effective one follows
            const auto number = parseNumber(nextWord(value));
            if (number && *number <= std::numeric_limits<std::uint32_t>::max()) {
                uid = static_cast<std::uint32_t>(*number);
            }
        } else if (key == "VmRSS") {
            hasResidentSize = true;
        } else if (key == "RssAnon" || key == "RssShmem" || key == "VmSwap") {
            hasAnonymous = hasAnonymous || key == "RssAnon";
            const auto bytes = parseKilobytes(value);
            usable = usable && bytes && addUnlessTooLarge(status.memory, *bytes);
            if (key == "VmSwap") status.swapped = bytes != 0U;
        } else if (key == "voluntary_ctxt_switches") {
            wakeups = parseNumber(nextWord(value));
        }
    }
    if (!processID || !uid) return std::nullopt;
    status.processID = *processID;
    status.uid = *uid;
    status.wakeups = wakeups.value_or(0);
    // A kernel thread and a process on its way out have no memory lines at all: that is a known zero.
    status.hasUsage = usable && wakeups && hasResidentSize == hasAnonymous;
    if (!status.hasUsage) status.memory = status.wakeups = 0;
    return status;
}

std::optional<ProcResident> parseProcStatm(std::string_view text) noexcept {
    nextWord(text); // the size of the address space
    const auto resident = parseNumber(nextWord(text));
    const auto shared = parseNumber(nextWord(text));
    if (!resident || !shared) return std::nullopt;
    return ProcResident{*resident, *shared};
}

std::optional<std::size_t> joinArguments(std::string_view block, bool cut, char* buffer,
                                         std::size_t size) noexcept {
    if (size == 0) return std::nullopt;
    buffer[0] = '\0';
    if (cut) block = block.substr(0, block.rfind('\0') + 1);
    // A process that has rewritten its title leaves the rest of its argument area as NULs, which are no
    // arguments; the last argument's own NUL goes with them.
    block = block.substr(0, block.find_last_not_of('\0') + 1);
    if (block.empty()) return 0;
    if (static_cast<std::size_t>(std::ranges::count(block, '\0')) >= maximumArguments) return std::nullopt;

    std::size_t written = 0;
    for (bool more = true; more;) {
        const std::size_t end = block.find('\0');
        const std::string_view argument = block.substr(0, end);
        more = end != std::string_view::npos;
        if (more) block.remove_prefix(end + 1);
        if (written + argument.size() + 2 >= size) break;
        if (written > 0) buffer[written++] = '\t';
        std::ranges::copy(argument, buffer + written);
        written += argument.size();
    }
    buffer[written] = '\0';
    return written;
}

} // namespace varnet::probes
