#pragma once

#include "VarnetApp/Engine/MonitorEngine.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// An engine on a pretended machine with its own storage and a clock in hand.
class EngineFixture : public testing::Test {
public:
    using Snapshot = std::shared_ptr<const MonitorSnapshot>;

    EngineFixture() { restart(); }

    /// A new engine on the same machine and storage: a restart of the program.
    void restart() {
        engine.reset();
        engine = std::make_unique<MonitorEngine>(MonitorEngine::Setup{.probes = probes,
                                                                      .clock = clock,
                                                                      .storage = folder.path() / "state",
                                                                      .home = folder.path(),
                                                                      .battery = battery});
    }

    Snapshot sample(bool isUIVisible = true) {
        return engine->sample(applications, Thermal::nominal, isUIVisible);
    }

    Snapshot sampleAfter(double seconds, bool isUIVisible = true) {
        clock.advance(seconds);
        return sample(isUIVisible);
    }

    /// A process whose start is its pid in seconds after the machine's boot.
    FakeProcess& add(std::int32_t pid, std::string name, std::int32_t parent = 1) {
        FakeProcess& process = probes.processes[pid];
        process.parent = parent;
        process.start = static_cast<std::uint64_t>(probes.boot + pid) * 1'000'000;
        process.path = "/usr/bin/" + name;
        process.name = std::move(name);
        return process;
    }

    /// A checkout below the folder, on the branch "main".
    std::string makeCheckout(const std::string& name) {
        const auto root = folder.path() / name;
        std::filesystem::create_directories(root / ".git");
        std::ofstream(root / ".git/HEAD") << "ref: refs/heads/main\n";
        return root.string();
    }

    /// Null when the snapshot has no such process.
    static SampleRef process(const Snapshot& snapshot, std::int32_t pid) {
        for (const SampleRef& candidate : snapshot->processes) {
            if (candidate->id.pid == pid) return candidate;
        }
        return nullptr;
    }

    TemporaryFolder folder;
    FakeProbes probes;
    FakeClock clock;
    std::vector<ApplicationDescriptor> applications;
    BatteryReader* battery = nullptr; ///< null: there is none
    std::unique_ptr<MonitorEngine> engine;
};

} // namespace varnet
