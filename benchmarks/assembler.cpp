// What one pass costs the assembler on a machine where nearly everything sleeps. The time covers assembling
// and the end of the pass before; making the samples is the engine's work and is left out.

#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "VarnetCore/Monitoring/SnapshotAssembler.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <utility>

namespace {

using namespace varnet;

constexpr std::uint64_t bootTime = 1'790'000'000;
constexpr std::uint32_t user = 1000;

/// A process table that stays the same from pass to pass, its texts shared as the engine shares them.
class Machine {
public:
    explicit Machine(int idle, int development) {
        add(0, 0, "systemd", "/usr/lib/systemd/systemd", {"/sbin/init"});
        const std::int32_t kernel = add(0, 0, "kthreadd", "", {}, true);
        const std::int32_t session = add(1, user, "systemd", "/usr/lib/systemd/systemd", {});
        for (int count = 0; count < idle - 3; ++count)
            addIdle(count, kernel, session);
        for (int count = 0; count < development; ++count)
            addDevelopment(count, session);
    }

    std::vector<ProcessSample> samples() const { return samples_; }
    const std::vector<ApplicationDescriptor>& applications() const { return applications_; }

private:
    std::int32_t add(std::int32_t parent, std::uint32_t uid, std::string name, std::string executable,
                     std::vector<std::string> arguments, bool system = false) {
        ProcessSample sample;
        sample.id = {bootTime, nextPid_, bootTime * 1'000'000 + static_cast<std::uint64_t>(nextPid_) * 1000};
        sample.parentPID = parent;
        sample.uid = uid;
        sample.name = std::move(name);
        sample.executable = std::move(executable);
        sample.arguments = std::move(arguments);
        sample.cpu = 0;
        sample.averageCPU = 0;
        sample.memory = 10'000'000;
        sample.energyImpact = 0;
        sample.instantaneousEnergyImpact = 0;
        sample.portsAvailable = uid == user;
        sample.isSystem = system;
        samples_.push_back(std::move(sample));
        return nextPid_++;
    }

    /// A fifth kernel threads, a fifth services, the rest the user's: thirty applications with their helpers
    /// and the shells in their terminals.
    void addIdle(int count, std::int32_t kernel, std::int32_t session) {
        const std::string number = std::to_string(count);
        if (count % 5 == 0) {
            add(kernel, 0, "kworker/" + number, "", {}, true);
        } else if (count % 5 == 1) {
            add(1, 0, "service" + number, "/usr/libexec/service" + number, {});
        } else if (count % 64 == 2) {
            app_ = add(session, user, "app" + number, "/opt/app" + number + "/app", {});
            applications_.push_back({"/usr/share/applications/app" + number + ".desktop", "app" + number,
                                     "App " + number, app_, samples_.back().id.start});
            last_ = app_;
        } else {
            // Chains of six below the application.
            if (count % 6 == 0) last_ = app_;
            last_ =
                add(last_ > 0 ? last_ : session, user, "helper", "/opt/app/helper", {"helper", "--type=x"});
        }
    }

    /// Twenty agents, each with servers and their workers in a project of its own.
    void addDevelopment(int count, std::int32_t session) {
        if (count % 10 == 0) {
            agent_ = add(session, user, "claude", "/home/me/.local/bin/claude", {"claude"});
            const std::string root = "/home/me/work/project" + std::to_string(count);
            project_ = std::make_shared<const Project>(Project{root, root, "project", "main"});
            server_ = 0;
        } else {
            const std::int32_t added = add(server_ > 0 ? server_ : agent_, user, "node", "/usr/bin/node",
                                           {"node", "/home/me/work/node_modules/.bin/vite"});
            if (server_ == 0) {
                server_ = added;
                samples_.back().ports = {3000 + count};
            }
        }
        samples_.back().cwd = project_->root;
        samples_.back().project = project_;
        samples_.back().averageCPU = count;
    }

    std::vector<ProcessSample> samples_;
    std::vector<ApplicationDescriptor> applications_;
    std::shared_ptr<const Project> project_;
    std::int32_t nextPid_ = 1;
    std::int32_t app_ = 0;
    std::int32_t last_ = 0;
    std::int32_t agent_ = 0;
    std::int32_t server_ = 0;
};

void assemblePass(benchmark::State& state) {
    const Machine machine(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    SnapshotAssembler assembler;
    SnapshotAssembler::Result before;
    double seconds = 0;
    for (auto _ : state) {
        std::vector<ProcessSample> samples = machine.samples();
        const auto start = std::chrono::steady_clock::now();
        before = assembler.assemble(std::move(samples), machine.applications(), Date{}, user);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
        seconds += taken.count();
    }
    const auto processes = static_cast<double>(state.iterations() * (state.range(0) + state.range(1)));
    state.counters["ns/process"] = seconds * 1e9 / processes;
    state.counters["groups"] = static_cast<double>(before.groups.size());
    state.counters["services"] = static_cast<double>(before.services.size());
}

/// The detector without the assembler's memory: what asking a sample costs.
void countDevelopment(benchmark::State& state) {
    const Machine machine(2000, 200);
    MonitorSnapshot snapshot;
    snapshot.processes = SnapshotAssembler().assemble(machine.samples(), {}, Date{}, user).processes;
    for (auto _ : state)
        benchmark::DoNotOptimize(snapshot.developmentCount());
}

BENCHMARK(countDevelopment)->Unit(benchmark::kMicrosecond);
BENCHMARK(assemblePass)
    ->ArgNames({"idle", "development"})
    ->Args({2000, 0})
    ->Args({2000, 200})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
