#include "VarnetApp/Diagnostics/Diagnostics.h"
#include "VarnetApp/Diagnostics/FixtureServer.h"
#include "VarnetApp/Diagnostics/OwnUsage.h"
#include "VarnetApp/Diagnostics/SnapshotReport.h"
#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "probes/SystemProbes.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <unistd.h>

#include <chrono>
#include <expected>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// Finds, measures and stops a real server: the whole way from the kernel to a confirmed exit.

namespace varnet::Diagnostics {

namespace {

using Json = nlohmann::ordered_json;
using Snapshot = std::shared_ptr<const MonitorSnapshot>;

constexpr auto pause = std::chrono::milliseconds(2100); // just above the engine's shortest pass
constexpr double workSeconds = 0.5;                     // of CPU time, to have something to measure
constexpr int mostPasses = 8;
constexpr int mostAttempts = 3;

/// One engine, on its queue, from its first pass to the stop of the fixture.
class Cycle {
public:
    Cycle(const std::filesystem::path& fixture, const std::filesystem::path& storage)
        : fixture_(fixture), engine_({.probes = probes_, .clock = clock_, .storage = storage, .home = {}}) {}

    /// @param report receives what was found
    /// @return what went wrong
    std::expected<void, std::string> run(Json& report) {
        // Nobody looks at a window: metrics come every five seconds, and a server that starts in between is
        // to be found all the same.
        sample(false);
        auto server = FixtureServer::start(fixture_);
        if (!server) return std::unexpected(server.error());
        Snapshot snapshot;
        const Service* service = nullptr;
        for (int pass = 0; pass < mostPasses && service == nullptr; ++pass) {
            std::this_thread::sleep_for(pause);
            snapshot = sample(false);
            service = serviceOf(*snapshot, server->pid());
        }
        if (service == nullptr) return std::unexpected("Fixture server not detected");
        const bool between = !service->root->cpu && !service->root->memory;
        report["detectedPorts"] = service->ports();
        report["discoveredBetweenMetricSamples"] = between;
        if (service->ports() != std::vector{server->port()})
            return std::unexpected("Fixture port not detected");

        const double ratio = compareOwnCPU();
        report["cpuRatioToGetrusage"] = ratio;
        if (ratio < 0.75 || ratio > 1.25) return std::unexpected("Measured CPU differs from getrusage");

        const auto plan = StopPlanner::make(*service, *snapshot, probes_.userID(), getpid());
        if (!plan) return std::unexpected("Fixture server cannot be stopped");
        report["targetCount"] = plan->targets.size();
        const std::vector<StopResult> results = execute(*plan);
        Json outcomes = Json::object();
        bool allExited = !results.empty();
        for (const StopResult& result : results) {
            outcomes[result.target.identity.id()] = rawValue(result.outcome);
            allExited = allExited && isExited(result.outcome);
        }
        report["outcomes"] = outcomes;
        if (!allExited) return std::unexpected("Fixture server did not exit");
        return {};
    }

    const std::optional<std::string>& historyFailure() const noexcept { return engine_.persistenceError(); }

private:
    Snapshot sample(bool isUIVisible) { return engine_.sample({}, Thermal::nominal, isUIVisible); }

    static const Service* serviceOf(const MonitorSnapshot& snapshot, pid_t pid) {
        for (const Service& service : snapshot.services) {
            if (service.root->id.pid == pid) return &service;
        }
        return nullptr;
    }

    /// CPU time of this program as measured, over what the kernel accounts to it. 1 is agreement; 0 when it
    /// was not measured.
    double compareOwnCPU() {
        std::this_thread::sleep_for(pause);
        // Both readings just before a sample, which reads the clocks at its beginning.
        const double ownBefore = ownCPUSeconds();
        const Snapshot before = sample(true);
        const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (ownCPUSeconds() - ownBefore < workSeconds && std::chrono::steady_clock::now() < latest) {
        }
        std::this_thread::sleep_for(pause);
        const double used = ownCPUSeconds() - ownBefore;
        const Snapshot after = sample(true);
        for (const SampleRef& process : after->processes) {
            if (process->id.pid == getpid() && process->cpu && used > 0) {
                return *process->cpu / 100 * (after->date - before->date) / used;
            }
        }
        return 0;
    }

    std::vector<StopResult> execute(const StopPlan& plan) {
        std::promise<std::vector<StopResult>> told;
        queue_.post([&] {
            engine_.execute(plan, StopForce::polite, queue_,
                            [&](std::vector<StopResult> results) { told.set_value(std::move(results)); });
        });
        return told.get_future().get();
    }

    const std::filesystem::path fixture_;
    SystemProbes probes_;
    SystemClock clock_;
    MonitorEngine engine_;
    ThreadQueue queue_; // last: ends before what its tasks touch
};

/// Both ways through: with a storage that works, and with one that does not.
std::expected<void, std::string> runAll(Json& report) {
    const std::filesystem::path fixture = std::filesystem::absolute("artifacts/integration-fixture");
    if (const auto failure = AtomicFile::makePrivateFolder(fixture)) return std::unexpected(*failure);
    const auto manifest = R"({"name":"varnet-integration-fixture"})";
    if (const auto failure = AtomicFile::write(fixture / "package.json", manifest)) {
        return std::unexpected(*failure);
    }
    // A machine so busy that the server was late to listen gets another try.
    for (int attempt = 1;; ++attempt) {
        Cycle cycle(fixture, fixture);
        if (auto result = cycle.run(report); !result) return result;
        if (cycle.historyFailure()) return std::unexpected(*cycle.historyFailure());
        if (report["discoveredBetweenMetricSamples"] == true) break;
        if (attempt == mostAttempts) return std::unexpected("Fixture server only found by a metric sample");
    }
    const std::filesystem::path broken = fixture / "not-a-directory";
    if (const auto failure = AtomicFile::write(broken, "")) return std::unexpected(*failure);
    Cycle cycle(fixture, broken);
    Json second;
    if (auto result = cycle.run(second); !result) return result;
    report["historyFailureReported"] = cycle.historyFailure().has_value();
    if (!cycle.historyFailure()) return std::unexpected("A broken history location was not reported");
    return {};
}

} // namespace

int integration() {
    Json report = {{"state", "running"}, {"success", false}};
    const auto result = runAll(report);
    report["state"] = result ? "finished" : "failed";
    report["success"] = result.has_value();
    if (!result) report["reason"] = report["error"] = result.error();
    fmt::print("{}\n", SnapshotReport::text(report));
    return result ? 0 : 1;
}

} // namespace varnet::Diagnostics
