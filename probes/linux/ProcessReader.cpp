#include "probes/linux/ProcessReader.h"

#include "probes/linux/DirectoryNumbers.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

namespace varnet::probes {

namespace {

bool meansGone(int error) noexcept {
    return error == ENOENT || error == ESRCH;
}

} // namespace

ProcessFolder::ProcessFolder(const KernelRoot& root, std::int32_t pid)
    : folder_(open((root.proc + "/" + std::to_string(pid)).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

std::optional<ProcessReading> ProcessReader::read(const ProcessFolder& folder, std::int32_t pid,
                                                  ReadFailure& failure) {
    if (folder.descriptor() < 0) {
        failure = meansGone(errno) ? ReadFailure::gone : ReadFailure::unreadable;
        return std::nullopt;
    }
    const auto statText = text_.readOnePiece(folder.descriptor(), "stat");
    if (!statText) {
        failure = meansGone(errno) ? ReadFailure::gone : ReadFailure::unreadable;
        return std::nullopt;
    }
    failure = ReadFailure::unreadable;
    const auto stat = parseProcStat(*statText);
    if (!stat || stat->pid != pid) return std::nullopt;

    ProcessReading reading;
    reading.parent = stat->parent;
    reading.flags = stat->kernelThread ? std::uint32_t{VN_FLAG_SYSTEM} : 0U;
    reading.start = root_.startMicroseconds(stat->startTicks);
    reading.ended = stat->ended();
    const std::string_view name = stat->name.substr(0, reading.name.size() - 1);
    std::ranges::copy(name, reading.name.begin());
    const std::uint64_t tickNanoseconds = 1'000'000'000 / root_.ticksPerSecond;
    const auto clock = root_.cpuClock != nullptr ? root_.cpuClock(pid) : std::nullopt;
    reading.cpu = clock ? *clock : stat->cpuTicks * tickNanoseconds;

    const auto statusText = text_.readOnePiece(folder.descriptor(), "status");
    if (!statusText) {
        failure = meansGone(errno) ? ReadFailure::gone : ReadFailure::unreadable;
        return std::nullopt;
    }
    const auto status = parseProcStatus(*statusText);
    // The kernel answers for a single thread's number as well; a thread is no process.
    if (!status) return std::nullopt;
    if (status->processID != pid) {
        failure = ReadFailure::gone;
        return std::nullopt;
    }
    reading.uid = status->uid;
    reading.hasUsage = status->hasUsage;
    reading.memory = status->memory;
    reading.wakeups = status->wakeups;
    if (!reading.hasUsage) reading.cpu = 0;
    return reading;
}

bool ProcessReader::refreshUsage(const ProcessFolder& folder, ProcessReading& reading) {
    const auto text =
        folder.descriptor() < 0 ? std::nullopt : text_.readOnePiece(folder.descriptor(), "status");
    const auto status = text ? parseProcStatus(*text) : std::nullopt;
    if (!status || !status->hasUsage) return false;
    reading.memory = status->memory;
    reading.wakeups = status->wakeups;
    return true;
}

bool ProcessReader::readPath(const ProcessFolder& folder, char* buffer, std::size_t size) {
    if (size > 0) buffer[0] = '\0';
    if (folder.descriptor() < 0) return false;
    std::array<char, VN_PATH_SIZE + 32> link{};
    const std::ptrdiff_t length = readLink(folder.descriptor(), "exe", link.data(), link.size());
    if (length < 1 || size == 0) return false;

    std::string_view path(link.data(), static_cast<std::size_t>(length));
    constexpr std::string_view deleted = " (deleted)";
    struct stat onDisk{};
    // An updated program runs on from a file without a name; a file may also really be called that.
    if (path.ends_with(deleted) && lstat(link.data(), &onDisk) != 0) path.remove_suffix(deleted.size());
    path = path.substr(0, size - 1);
    std::ranges::copy(path, buffer);
    buffer[path.size()] = '\0';
    return true;
}

bool ProcessReader::listPids(std::vector<std::int32_t>& pids) const {
    pids.clear();
    const Descriptor folder(open(root_.proc.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.valid() || !appendNumbers(folder.get(), pids)) return false;
    std::erase(pids, 0);
    // The kernel lists them in order; a fixture's file system need not.
    if (!std::ranges::is_sorted(pids)) std::ranges::sort(pids);
    return true;
}

} // namespace varnet::probes
