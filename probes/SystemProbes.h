#pragma once

#include "probes/Probes.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

/// The running kernel.
class SystemProbes final : public Probes {
public:
    /// @param sensorRoot folder in which the sensors are read in place of /sys; empty: the running kernel's
    explicit SystemProbes(std::string sensorRoot = {}) : sensorRoot_(std::move(sensorRoot)) {}

    std::optional<std::span<const VNTableEntry>> table(bool full) override;
    std::optional<Identity> identity(std::int32_t pid) override;
    std::optional<std::string> path(std::int32_t pid) override;
    std::optional<std::string> cwd(std::int32_t pid) override;
    std::optional<std::string> arguments(std::int32_t pid) override;
    std::optional<std::vector<std::uint16_t>> ports(std::int32_t pid) override;
    std::optional<VNCPUTicks> cpuTicks() override;
    VNSystemMemory systemMemory() override;
    std::int64_t bootTime() override;
    std::optional<std::string> model() override;
    std::optional<std::vector<VNFan>> fans() override;
    std::int32_t thermalState() override;
    std::int32_t exists(std::int32_t pid) override;
    std::int32_t signalChecked(std::int32_t pid, std::uint64_t start, std::uint32_t uid,
                               std::int32_t signal) override;
    std::unique_ptr<DiskWalk> walkDisk(const std::string& path, DiskScope scope) override;
    std::uint32_t userID() override;
    int activeProcessorCount() override;
    std::uint64_t physicalMemory() override;
    double systemUptime() override;

private:
    struct CloseTable {
        void operator()(VNTable* table) const noexcept { vn_table_close(table); }
    };
    struct CloseListeners {
        void operator()(VNListeners* listeners) const noexcept { vn_listeners_close(listeners); }
    };

    struct CloseSensors {
        void operator()(VNSensors* sensors) const noexcept { vn_sensors_close(sensors); }
    };

    VNSensors* sensors();
    template <class Read>
    std::optional<std::string> readText(std::size_t size, Read read);

    const std::string sensorRoot_;
    std::unique_ptr<VNSensors, CloseSensors> sensors_; ///< null until asked for
    std::vector<char> buffer_;                         ///< for texts; empty until one is read
    std::unique_ptr<VNTable, CloseTable> table_;
    std::unique_ptr<VNListeners, CloseListeners> listeners_; ///< null until ports are asked for
};

} // namespace varnet
