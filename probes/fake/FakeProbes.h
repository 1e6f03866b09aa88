#pragma once

#include "probes/Probes.h"
#include "probes/fake/FakeDiskWalk.h"

#include <cerrno>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// One process of a pretended machine.
struct FakeProcess {
    std::int32_t parent = 1;
    std::uint32_t uid = 501;
    std::uint32_t flags = 0;
    std::uint64_t start = 0;
    std::optional<std::uint64_t> cpu = 0; ///< nanoseconds; empty: usage cannot be read
    std::uint64_t memory = 0;
    std::uint64_t wakeups = 0;
    std::string name;
    std::string path;
    std::optional<std::string> cwd;
    std::optional<std::string> arguments = ""; ///< joined by tabs; empty optional: cannot be read
    std::optional<std::vector<std::uint16_t>> ports = std::vector<std::uint16_t>{};
    bool listed = true; ///< false: alive, but the table misses it
};

/// A pretended machine: a table to script, failures to inject, calls counted, signals recorded and never
/// sent.
class FakeProbes final : public Probes {
public:
    struct Calls {
        int fullTables = 0;
        int graphTables = 0;
        int paths = 0;
        int arguments = 0;
        int cwds = 0;
        int ports = 0;
        int fans = 0;
    };
    struct Signal {
        std::int32_t pid;
        std::uint64_t start;
        std::uint32_t uid;
        std::int32_t signal;
        std::int32_t answer;
    };

    std::map<std::int32_t, FakeProcess> processes;
    bool tableFails = false;
    std::map<std::int32_t, std::int32_t> existsAnswers; ///< instead of what the table says
    std::optional<VNCPUTicks> ticks;
    VNSystemMemory memory{};
    std::int64_t boot = 1'700'000'000;
    std::optional<std::string> modelName = "Fake 1";
    std::optional<std::vector<VNFan>> fanRecords = std::vector<VNFan>{}; ///< empty optional: cannot be read
    std::int32_t thermal = 0;
    std::uint32_t user = 501;
    int cores = 4;
    std::uint64_t ram = 16'000'000'000;
    double uptime = 1000;
    std::map<std::string, FakeTree> trees; ///< by the path walked; others cannot be opened

    Calls calls;
    std::vector<Signal> sent;
    /// Called for a signal that passes every check; what it does to `processes` is the signal's effect.
    std::function<void(std::int32_t pid, std::int32_t signal)> onSignal;

    std::optional<std::span<const VNTableEntry>> table(bool full) override;
    std::optional<Identity> identity(std::int32_t pid) override;
    std::optional<std::string> path(std::int32_t pid) override;
    std::optional<std::string> cwd(std::int32_t pid) override;
    std::optional<std::string> arguments(std::int32_t pid) override;
    std::optional<std::vector<std::uint16_t>> ports(std::int32_t pid) override;
    std::optional<VNCPUTicks> cpuTicks() override { return ticks; }
    VNSystemMemory systemMemory() override { return memory; }
    std::int64_t bootTime() override { return boot; }
    std::optional<std::string> model() override { return modelName; }
    std::optional<std::vector<VNFan>> fans() override {
        ++calls.fans;
        return fanRecords;
    }
    std::int32_t thermalState() override { return thermal; }
    std::int32_t exists(std::int32_t pid) override;
    std::int32_t signalChecked(std::int32_t pid, std::uint64_t start, std::uint32_t uid,
                               std::int32_t signal) override;
    std::unique_ptr<DiskWalk> walkDisk(const std::string& path, DiskScope scope) override;
    std::uint32_t userID() override { return user; }
    int activeProcessorCount() override { return cores; }
    std::uint64_t physicalMemory() override { return ram; }
    double systemUptime() override { return uptime; }

private:
    const FakeProcess* find(std::int32_t pid) const;

    std::vector<VNTableEntry> entries_;
};

} // namespace varnet
