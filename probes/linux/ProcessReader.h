#pragma once

#include "probes/linux/KernelRoot.h"
#include "probes/linux/ParseProcess.h"
#include "probes/linux/ProcText.h"
#include "probes/vn_probes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace varnet::probes {

/// Why a process could not be read.
enum class ReadFailure {
    gone,       ///< there is no such process
    thread,     ///< the number is that of a mere thread
    unreadable, ///< there is one, and its files make no sense or are refused
    starved     ///< this program is out of descriptors or memory: nothing is known about the process
};

/// What one reading of a process tells, apart from its path.
struct ProcessReading {
    std::int32_t parent = 0;
    std::uint32_t uid = 0;
    std::uint32_t flags = 0;
    std::uint64_t start = 0; ///< microseconds since 1970
    bool ended = false;      ///< waits to be collected: no longer a process to anyone but this reader
    bool userKnown = false;  ///< false: `status` could not be read, and uid is the owner of its folder
    bool hasUsage = false;
    std::uint64_t cpu = 0; ///< nanoseconds
    std::uint64_t memory = 0;
    std::uint64_t wakeups = 0;
    std::array<char, VN_NAME_SIZE> name{};
};

/// One process's folder, held open: all that is read through it is about the same process, also when its
/// pid is given away meanwhile.
class ProcessFolder {
public:
    ProcessFolder(const KernelRoot& root, std::int32_t pid);

    /// -1 when it could not be opened.
    int descriptor() const noexcept { return folder_.get(); }
    /// Why not, as an errno value.
    int error() const noexcept { return error_; }

private:
    Descriptor folder_;
    int error_;
};

/// Reads single processes; keeps its buffer between readings. For one thread at a time.
class ProcessReader {
public:
    explicit ProcessReader(const KernelRoot& root) : root_(root) {}

    /// Reads `stat` and `status`. @param failure says why nothing came back
    std::optional<ProcessReading> read(const ProcessFolder& folder, std::int32_t pid, ReadFailure& failure);
    /// Only what changes in a process that sleeps: its memory. To be asked between listPids and the next one.
    /// @param resident what the last refreshing saw, empty at first: while it stands still, so does the
    /// memory
    /// @return false, with the reading as it was, when the process could not be read
    bool refreshMemory(std::int32_t pid, ProcessReading& reading, std::optional<ProcResident>& resident);
    /// Where the link "exe" or "cwd" leads, cut to the buffer; false and "" when unknown.
    static bool readPath(const ProcessFolder& folder, const char* link, char* buffer, std::size_t size);
    /// The number that the kernel gave out last, to a process or a thread: as long as it stands still, none
    /// has begun. Empty when it cannot be read.
    std::optional<std::uint64_t> newestPid();
    /// Every pid of the process table, ascending; false when the table cannot be read.
    bool listPids(std::vector<std::int32_t>& pids);

    const KernelRoot& root() const noexcept { return root_; }

private:
    const KernelRoot& root_;
    Descriptor table_; ///< the folder of all processes, as last listed
    ProcText text_;
};

} // namespace varnet::probes
