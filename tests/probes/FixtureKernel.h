#pragma once

#include "probes/linux/KernelRoot.h"
#include "tests/fakes/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace varnet::probes {

/// What a prepared process's files say.
struct FixtureProcess {
    std::int32_t pid = 0;
    std::string name = "worker";
    char state = 'S';
    std::int32_t parent = 1;
    std::uint32_t uid = 1000; ///< effective; the real one is 4242
    std::uint32_t kernelFlags = 0x00400000;
    std::uint64_t userTicks = 0;
    std::uint64_t systemTicks = 0;
    std::uint64_t threads = 1;
    std::uint64_t startTicks = 1000;
    std::optional<std::uint64_t> anonymousKilobytes = 400; ///< empty: no memory lines at all
    std::uint64_t swappedKilobytes = 0;
    std::uint64_t wakeups = 7;
    std::string exe = "/usr/bin/worker";
};

/// A prepared /proc and /sys in a folder of its own, with a CPU clock that the test winds. The clock is a
/// plain function without a state of its own, hence one fixture at a time.
class FixtureKernel {
public:
    static constexpr std::uint64_t bootSeconds = 1'700'000'000;

    FixtureKernel();
    FixtureKernel(const FixtureKernel&) = delete;
    FixtureKernel& operator=(const FixtureKernel&) = delete;
    ~FixtureKernel();

    /// 100 ticks a second, booted at bootSeconds.
    const KernelRoot& root() const noexcept { return root_; }
    std::filesystem::path processFolder(std::int32_t pid) const;

    /// Writes a process's files, over what was there, and leaves its CPU clock as it is.
    void put(const FixtureProcess& process);
    /// As a process that runs: its files change and its CPU clock moves on.
    void run(const FixtureProcess& process);
    /// Only what tells of its memory, as when the kernel moves pages of a process that sleeps.
    void putMemory(const FixtureProcess& process) const;
    void remove(std::int32_t pid);

    /// Files below the fixture's folder, e.g. "proc/meminfo".
    void write(const std::string& name, std::string_view text) const;
    void link(const std::string& name, const std::string& target) const;

private:
    static std::optional<std::uint64_t> clockOf(std::int32_t pid);
    static std::map<std::int32_t, std::uint64_t> clocks;

    TemporaryFolder folder_;
    KernelRoot root_;
};

} // namespace varnet::probes
