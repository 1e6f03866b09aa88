#include "probes/linux/ProcessReader.h"

#include "probes/linux/DirectoryNumbers.h"
#include "probes/linux/ParseSystem.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

namespace varnet::probes {

namespace {

ReadFailure failureOf(int error) noexcept {
    switch (error) {
    case ENOENT:
    case ESRCH:
        return ReadFailure::gone;
    case EMFILE:
    case ENFILE:
    case ENOMEM:
        return ReadFailure::starved;
    default:
        return ReadFailure::unreadable;
    }
}

} // namespace

ProcessFolder::ProcessFolder(const KernelRoot& root, std::int32_t pid)
    : folder_(open((root.proc + "/" + std::to_string(pid)).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)),
      error_(folder_.valid() ? 0 : errno) {}

std::optional<ProcessReading> ProcessReader::read(const ProcessFolder& folder, std::int32_t pid,
                                                  ReadFailure& failure) {
    if (folder.descriptor() < 0) {
        failure = failureOf(folder.error());
        return std::nullopt;
    }
    const auto statText = text_.readOnePiece(folder.descriptor(), "stat");
    if (!statText) {
        failure = failureOf(errno);
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
        failure = failureOf(errno);
        if (failure != ReadFailure::unreadable) return std::nullopt;
    }
    const auto status = statusText ? parseProcStatus(*statusText) : std::nullopt;
    if (!status) {
        // It is still a process with a name. The folder belongs to its user, or to the superuser when the
        // process guards itself.
        struct stat owner{};
        if (fstat(folder.descriptor(), &owner) != 0) return std::nullopt;
        reading.uid = owner.st_uid;
        reading.cpu = 0;
        return reading;
    }
    // The kernel answers for a single thread's number as well; a thread is no process.
    if (status->processID != pid) {
        failure = ReadFailure::thread;
        return std::nullopt;
    }
    reading.uid = status->uid;
    reading.userKnown = true;
    reading.hasUsage = status->hasUsage;
    reading.memory = status->memory;
    reading.wakeups = status->wakeups;
    if (!reading.hasUsage) reading.cpu = 0;
    return reading;
}

bool ProcessReader::refreshMemory(std::int32_t pid, ProcessReading& reading,
                                  std::optional<ProcResident>& resident) {
    // A third of the price of `status`, and mostly the whole of it. It is read first: what changes in between
    // makes a difference the next time.
    const std::string folder = std::to_string(pid);
    const auto statmText = text_.readOnePiece(table_.get(), (folder + "/statm").c_str());
    const auto now = statmText ? parseProcStatm(*statmText) : std::nullopt;
    if (now && now == resident) return true;
    const auto text = text_.readOnePiece(table_.get(), (folder + "/status").c_str());
    const auto status = text ? parseProcStatus(*text) : std::nullopt;
    if (!status || status->processID != pid || !status->hasUsage) return false;
    reading.memory = status->memory;
    resident = status->swapped ? std::nullopt : now;
    return true;
}

bool ProcessReader::readPath(const ProcessFolder& folder, const char* link, char* buffer, std::size_t size) {
    if (size == 0) return false;
    buffer[0] = '\0';
    if (folder.descriptor() < 0) return false;
    std::array<char, VN_PATH_SIZE + 32> target;
    const std::ptrdiff_t length = readLink(folder.descriptor(), link, target.data(), target.size());
    if (length < 1) return false;

    std::string_view path(target.data(), static_cast<std::size_t>(length));
    constexpr std::string_view deleted = " (deleted)";
    struct stat onDisk{};
    // An updated program runs on from a file without a name; a file may also really be called that.
    if (path.ends_with(deleted) && lstat(target.data(), &onDisk) != 0) path.remove_suffix(deleted.size());
    path = path.substr(0, size - 1);
    std::ranges::copy(path, buffer);
    buffer[path.size()] = '\0';
    return true;
}

std::optional<std::uint64_t> ProcessReader::newestPid() {
    const auto text = text_.readOnePiece(AT_FDCWD, (root_.proc + "/loadavg").c_str());
    return text ? parseNewestPid(*text) : std::nullopt;
}

bool ProcessReader::listPids(std::vector<std::int32_t>& pids) {
    pids.clear();
    table_ = Descriptor();
    table_ = Descriptor(open(root_.proc.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!table_.valid() || !appendNumbers(table_.get(), pids)) return false;
    std::erase(pids, 0);
    // The kernel lists them in order; a fixture's file system need not.
    if (!std::ranges::is_sorted(pids)) std::ranges::sort(pids);
    return true;
}

} // namespace varnet::probes
