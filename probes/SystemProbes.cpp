#include "probes/SystemProbes.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace varnet {

namespace {

constexpr std::size_t argumentBufferSize = 32'768;
constexpr std::int32_t portCapacity = 64;
constexpr std::size_t modelBufferSize = 256;
constexpr std::int32_t fanCapacity = 10;

// A clock that started with the system and counts on while it sleeps.
#ifdef CLOCK_BOOTTIME
constexpr clockid_t sinceBoot = CLOCK_BOOTTIME;
#else
constexpr clockid_t sinceBoot = CLOCK_MONOTONIC;
#endif

class SystemDiskWalk final : public DiskWalk {
public:
    explicit SystemDiskWalk(VNDiskWalk* walk) : walk_(walk) {}

    std::int32_t next(VNDiskEntry& entry) override { return vn_disk_next(walk_.get(), &entry); }
    void skip() override { vn_disk_skip(walk_.get()); }

private:
    struct Close {
        void operator()(VNDiskWalk* walk) const noexcept { vn_disk_close(walk); }
    };

    const std::unique_ptr<VNDiskWalk, Close> walk_;
};

} // namespace

/// Reads into one buffer that stays, then copies what came: a fresh large buffer for every small text would
/// leave the heap full of holes.
template <class Read>
std::optional<std::string> SystemProbes::readText(std::size_t size, Read read) {
    if (buffer_.size() < size) buffer_.resize(size);
    if (read(buffer_.data(), size) != 0) return std::nullopt;
    return std::string(buffer_.data());
}

std::optional<std::span<const VNTableEntry>> SystemProbes::table(bool full) {
    listeners_.reset();
    if (!table_) table_.reset(vn_table_open());
    if (!table_) return std::nullopt;
    const VNTableEntry* entries = nullptr;
    const std::int32_t count = vn_table_read(table_.get(), full ? 1 : 0, &entries);
    if (count < 0 || entries == nullptr) return std::nullopt;
    return std::span(entries, static_cast<std::size_t>(count));
}

std::optional<Probes::Identity> SystemProbes::identity(std::int32_t pid) {
    Identity identity;
    if (vn_identity(pid, &identity.start, &identity.uid) != 0) return std::nullopt;
    return identity;
}

std::optional<std::string> SystemProbes::path(std::int32_t pid) {
    return readText(VN_PATH_SIZE,
                    [pid](char* buffer, std::size_t size) { return vn_path(pid, buffer, size); });
}

std::optional<std::string> SystemProbes::cwd(std::int32_t pid) {
    return readText(VN_PATH_SIZE,
                    [pid](char* buffer, std::size_t size) { return vn_cwd(pid, buffer, size); });
}

std::optional<std::string> SystemProbes::arguments(std::int32_t pid) {
    return readText(argumentBufferSize,
                    [pid](char* buffer, std::size_t size) { return vn_arguments(pid, buffer, size); });
}

std::optional<std::vector<std::uint16_t>> SystemProbes::ports(std::int32_t pid) {
    if (!listeners_) listeners_.reset(vn_listeners_open());
    if (!listeners_) return std::nullopt;
    std::array<std::uint16_t, portCapacity> ports{};
    const std::int32_t count = vn_listeners_ports(listeners_.get(), pid, ports.data(), portCapacity);
    if (count < 0) return std::nullopt;
    return std::vector<std::uint16_t>(ports.begin(), ports.begin() + count);
}

std::optional<VNCPUTicks> SystemProbes::cpuTicks() {
    VNCPUTicks ticks{};
    if (vn_cpu_ticks(&ticks) != 0) return std::nullopt;
    return ticks;
}

VNSystemMemory SystemProbes::systemMemory() {
    VNSystemMemory memory{};
    vn_system_memory(&memory);
    return memory;
}

std::int64_t SystemProbes::bootTime() {
    return vn_boot_time();
}

std::optional<std::string> SystemProbes::model() {
    return readText(modelBufferSize, [](char* buffer, std::size_t size) { return vn_model(buffer, size); });
}

VNSensors* SystemProbes::sensors() {
    if (!sensors_) sensors_.reset(vn_sensors_open(sensorRoot_.empty() ? nullptr : sensorRoot_.c_str()));
    return sensors_.get();
}

std::optional<std::vector<VNFan>> SystemProbes::fans() {
    std::array<VNFan, fanCapacity> fans{};
    VNSensors* const handle = sensors();
    const std::int32_t count = handle != nullptr ? vn_sensors_fans(handle, fans.data(), fanCapacity) : -1;
    if (count < 0) return std::nullopt;
    return std::vector<VNFan>(fans.begin(), fans.begin() + count);
}

std::int32_t SystemProbes::thermalState() {
    VNSensors* const handle = sensors();
    return handle != nullptr ? vn_sensors_thermal_state(handle) : 0;
}

std::int32_t SystemProbes::exists(std::int32_t pid) {
    return vn_exists(pid);
}

std::int32_t SystemProbes::signalChecked(std::int32_t pid, std::uint64_t start, std::uint32_t uid,
                                         std::int32_t signal) {
    return vn_signal_checked(pid, start, uid, signal);
}

std::unique_ptr<DiskWalk> SystemProbes::walkDisk(const std::string& path, DiskScope scope) {
    const bool oneVolume = scope == DiskScope::oneVolume;
    VNDiskWalk* const walk = oneVolume ? vn_disk_open_volume(path.c_str()) : vn_disk_open(path.c_str());
    return walk != nullptr ? std::make_unique<SystemDiskWalk>(walk) : nullptr;
}

std::uint32_t SystemProbes::userID() {
    return getuid();
}

int SystemProbes::activeProcessorCount() {
    return static_cast<int>(std::clamp(sysconf(_SC_NPROCESSORS_ONLN), 1L, 1L << 20U));
}

std::uint64_t SystemProbes::physicalMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long size = sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size) : 0;
}

double SystemProbes::systemUptime() {
    timespec time{};
    if (clock_gettime(sinceBoot, &time) != 0) return 0;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace varnet
