#pragma once

#include "probes/DiskWalk.h"
#include "probes/vn_probes.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// The kernel layer as an object, so that what measures can be handed a fake. Every operation answers as the
/// vn_ function behind it; an empty optional stands for that function's failure. For one thread at a time.
class Probes {
public:
    struct Identity {
        std::uint64_t start = 0; ///< microseconds since 1970
        std::uint32_t uid = 0;
    };

    virtual ~Probes() = default;

    /// Every living process, ascending by pid; the list lives until the next call. Never shares its names
    /// and paths with anything that outlives it.
    /// @param full with path and usage; else only who exists
    virtual std::optional<std::span<const VNTableEntry>> table(bool full) = 0;

    virtual std::optional<Identity> identity(std::int32_t pid) = 0;
    virtual std::optional<std::string> path(std::int32_t pid) = 0;
    virtual std::optional<std::string> cwd(std::int32_t pid) = 0;
    /// Joined by tabs; at most 32,767 bytes.
    virtual std::optional<std::string> arguments(std::int32_t pid) = 0;
    /// At most 64. The machine's sockets are read once between two reads of the table.
    virtual std::optional<std::vector<std::uint16_t>> ports(std::int32_t pid) = 0;

    virtual std::optional<VNCPUTicks> cpuTicks() = 0;
    virtual VNSystemMemory systemMemory() = 0;
    virtual std::int64_t bootTime() = 0;
    virtual std::optional<std::string> model() = 0;
    /// At most 10; none on a machine that shows no fan.
    virtual std::optional<std::vector<VNFan>> fans() = 0;
    /// 0 (nominal) to 3 (critical). Remembers between calls: only one of the program's probes is to be asked.
    virtual std::int32_t thermalState() = 0;

    virtual std::int32_t exists(std::int32_t pid) = 0;
    virtual std::int32_t signalChecked(std::int32_t pid, std::uint64_t start, std::uint32_t uid,
                                       std::int32_t signal) = 0;

    /// A walk of its own; may be asked for from any thread. Null as vn_disk_open.
    virtual std::unique_ptr<DiskWalk> walkDisk(const std::string& path, DiskScope scope) = 0;

    virtual std::uint32_t userID() = 0;         ///< the real user this program runs as
    virtual int activeProcessorCount() = 0;     ///< at least 1
    virtual std::uint64_t physicalMemory() = 0; ///< bytes; 0 when unknown
    virtual double systemUptime() = 0;          ///< seconds since boot
};

} // namespace varnet
