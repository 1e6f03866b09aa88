#include "VarnetApp/Previews/PreparedMachine.h"

#include "VarnetApp/Previews/PreparedBattery.h"
#include "VarnetCore/Findings/FindingEngine.h"
#include "VarnetCore/Monitoring/SnapshotAssembler.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

namespace {

constexpr int cores = 8;
using PreparedMachine::user;
constexpr std::uint64_t boot = 1'790'000'000;
constexpr double minute = 60;
constexpr double hour = 3600;
constexpr std::uint64_t mb = 1024 * 1024;

/// An application with as many processes as it is said to have.
struct App {
    const char* name;
    const char* id;
    int processes;
    double wholeCPU; ///< percent of the whole machine
    double megabytes;
    double age; ///< seconds
};

constexpr std::array<App, 9> apps{{
    {"Meridian Browser", "meridian-browser", 24, 9.8, 4710, 9 * hour},
    {"Quill Editor", "quill", 11, 7.4, 3174, 8 * hour},
    {"Boardroom", "boardroom", 6, 3.9, 912, 2 * hour},
    {"Huddle Chat", "huddle", 8, 2.1, 1229, 9 * hour},
    {"Ember Terminal", "ember-terminal", 5, 0.9, 164, 9 * hour},
    {"Tempo Music", "tempo", 4, 0.8, 402, 3 * hour},
    {"Inkwell Notes", "inkwell", 3, 0.3, 288, 5 * hour},
    {"Slate Calendar", "slate", 2, 0.1, 143, 9 * hour},
    {"Lantern Mail", "lantern", 4, 0.1, 377, 9 * hour},
}};

/// Processes of nobody's application.
struct Lone {
    const char* name;
    double wholeCPU;
    double megabytes;
    bool isSystem;
};

constexpr std::array<Lone, 12> lone{{
    {"display-server", 1.9, 318, true},
    {"file-indexer", 0.6, 96.4, false},
    {"session-bus", 0.1, 11.2, true},
    {"sound-server", 0.4, 38, true},
    {"network-manager", 0.1, 24, true},
    {"power-daemon", 0.0, 9, true},
    {"package-cache", 0.2, 61, false},
    {"login-manager", 0.0, 12, true},
    {"clock-sync", 0.0, 6, true},
    {"disk-health", 0.0, 8, true},
    {"keyring", 0.0, 15, false},
    {"sync-agent", 0.3, 88, false},
}};

class Builder {
public:
    explicit Builder(Date now) : now_(now) {}

    void addApps() {
        for (const App& app : apps) {
            const std::int32_t main = add(app.name, "/opt/" + std::string(app.id) + "/" + app.id, 1, app.age);
            applications_.push_back({"/usr/share/applications/" + std::string(app.id) + ".desktop", app.id,
                                     app.name, main, samples_.back().id.start});
            share(app.wholeCPU, app.megabytes, app.processes, [&](int i) {
                if (i > 0) {
                    add(i == 1 ? std::string(app.id) + "-renderer" : std::string(app.id) + "-worker",
                        "/opt/" + std::string(app.id) + "/helper", main, app.age - 40);
                }
            });
        }
    }

    void addLone() {
        for (const Lone& one : lone) {
            add(one.name, "/usr/libexec/" + std::string(one.name), 1, 9 * hour);
            samples_.back().isSystem = one.isSystem;
            if (one.isSystem) samples_.back().uid = 0;
            use(one.wholeCPU, one.megabytes);
        }
    }

    void addProjects() {
        const auto storefront = project("storefront", "feature/checkout");
        const auto storefrontMain = project("storefront", "main");
        const auto gateway = project("api-gateway", "main");
        const auto billing = project("billing-worker", "fix/retry-loop");
        const auto tokens = project("design-tokens", "main");

        agent("claude", "Claude Code", storefront, 3.4 * hour, 1.6, 512);
        const auto claude = current();
        server("node", {"node", "/srv/storefront/node_modules/.bin/next", "dev"}, storefront, 3000,
               3 * hour + 12 * minute, 4.1, 1126);
        credit(claude, std::nullopt);

        agent("cursor-agent", "Cursor", storefrontMain, 52 * minute, 0.9, 340);
        const auto cursor = current();
        server("node", {"node", "/srv/storefront/node_modules/.bin/vite", "--port", "5173"}, storefrontMain,
               5173, 46 * minute, 1.2, 286);
        credit(cursor, std::nullopt);
        server("node", {"node", "/srv/storefront/node_modules/.bin/vite", "--port", "5174"}, storefrontMain,
               5174, 2 * hour + 3 * minute, 0.4, 251);

        server("python3", {"python3", "manage.py", "runserver", "8000"}, gateway, 8000,
               5 * hour + 41 * minute, 0.9, 412);
        credit({{boot, 4001, startOf(6 * hour)}, "Claude Code"}, now_ - (hour + 48 * minute));

        agent("codex", "Codex", billing, 25 * minute, 0.2, 254);
        const auto codex = current();
        server("python3", {"python3", "-m", "uvicorn", "app:main", "--port", "8100"}, billing, 8100,
               18 * minute, 0.3, 148);
        credit(codex, std::nullopt);

        agent("gemini", "Gemini CLI", tokens, 12 * minute, 0.3, 211);
        samples_.back().memory.reset();

        server("node", {"node", "server.js"}, nullptr, 9229, 7 * minute, 0.1, 88.2);
    }

    /// A group that has kept a core busy.
    void addHardWork() {
        add("ledger-sync", "/opt/ledger/ledger-sync", 1, 3 * hour);
        use(11.6, 640);
    }

    std::shared_ptr<MonitorSnapshot> finish() {
        auto snapshot = std::make_shared<MonitorSnapshot>();
        SnapshotAssembler assembler;
        assembler.lineage = lineage_;
        auto result = assembler.assemble(std::move(samples_), applications_, now_, user);
        FindingEngine findings;
        findings.evaluate(result.groups, result.services, result.processes,
                          now_ - FindingEngine::sustained - 1);
        snapshot->findings = findings.evaluate(result.groups, result.services, result.processes, now_);
        snapshot->date = now_;
        snapshot->processes = std::move(result.processes);
        snapshot->groups = std::move(result.groups);
        snapshot->services = std::move(result.services);
        snapshot->systemCPU = 46;
        snapshot->physicalMemory = 32ULL * 1024 * mb;
        snapshot->systemMemory = {18329 * mb, 3277 * mb, 512 * mb};
        snapshot->logicalCores = cores;
        snapshot->fans = {
            FanAvailability::available, {{0, 2840, 5600}, {1, 2790, 5600}}, FanLevel::running, false, now_};
        snapshot->battery = PreparedBattery::onBattery(now_);
        addHistory(*snapshot);
        return snapshot;
    }

private:
    struct Agent {
        ProcessIdentity identity;
        std::string name;
    };

    std::uint64_t startOf(double age) const {
        return static_cast<std::uint64_t>((now_ - age).sinceUnixEpoch() * 1e6);
    }

    std::int32_t add(const std::string& name, const std::string& executable, std::int32_t parent,
                     double age) {
        ProcessSample sample;
        sample.id = {boot, nextPID_++, startOf(age)};
        sample.parentPID = parent;
        sample.uid = user;
        sample.name = name;
        sample.executable = executable;
        sample.portsAvailable = true;
        samples_.push_back(std::move(sample));
        return samples_.back().id.pid;
    }

    /// Gives the newest process its figures.
    void use(double wholeCPU, double megabytes) {
        samples_.back().cpu = wholeCPU * cores;
        samples_.back().averageCPU = wholeCPU * cores;
        samples_.back().memory = static_cast<std::uint64_t>(megabytes * static_cast<double>(mb));
    }

    /// Spreads a total over the newest process and those that `addOne` adds, most of it on the first.
    template <typename AddOne>
    void share(double wholeCPU, double megabytes, int count, AddOne addOne) {
        for (int i = 0; i < count; ++i) {
            addOne(i);
            const double part = count == 1 ? 1 : i == 0 ? 0.4 : 0.6 / (count - 1);
            use(wholeCPU * part, megabytes * part);
        }
    }

    static std::shared_ptr<const Project> project(const std::string& name, const std::string& worktree) {
        const std::string root = "/srv/" + name + (worktree == "main" ? "" : "-checkout");
        return std::make_shared<const Project>(Project{root, "/srv/" + name, name, worktree});
    }

    void agent(const std::string& program, const std::string& name,
               const std::shared_ptr<const Project>& project, double age, double wholeCPU, double megabytes) {
        add(program, "/usr/local/bin/" + program, 1, age);
        samples_.back().arguments = {program};
        samples_.back().project = project;
        samples_.back().cwd = SharedText(project->root);
        use(wholeCPU, megabytes);
        agent_ = {samples_.back().id, name};
    }
    Agent current() const { return agent_; }

    void server(const std::string& program, std::vector<std::string> arguments,
                const std::shared_ptr<const Project>& project, int port, double age, double wholeCPU,
                double megabytes) {
        add(program, "/usr/bin/" + program, 1, age);
        ProcessSample& sample = samples_.back();
        sample.arguments = SharedTexts(std::move(arguments));
        sample.project = project;
        if (project) sample.cwd = SharedText(project->root);
        sample.ports = {port};
        use(wholeCPU, megabytes);
    }

    void credit(const Agent& agent, std::optional<Date> exitedAt) {
        lineage_[samples_.back().id] = {agent.name, agent.identity, Confidence::observed,
                                        "Started below this agent.", exitedAt};
    }

    /// A quarter of an hour with one hill, one valley and one peak.
    void addHistory(MonitorSnapshot& snapshot) const {
        for (int i = 450; i >= 0; --i) {
            const double ago = i * 2.0;
            const double x = 900 - ago;
            const auto hill = [x](double centre, double width, double height) {
                return height * std::exp(-(x - centre) * (x - centre) / (2 * width * width));
            };
            const double noise = 2.2 * std::sin(x / 7.0) + 1.6 * std::sin(x / 2.9 + 1) + std::sin(x / 1.3);
            const double value = 28 + hill(230, 22, 27) + hill(690, 30, 22) - hill(440, 60, 11) +
                                 14 / (1 + std::exp(-(x - 540) / 14)) + noise;
            snapshot.history.push_back({now_ - ago, value});
        }
    }

    const Date now_;
    std::int32_t nextPID_ = 4127;
    std::vector<ProcessSample> samples_;
    std::vector<ApplicationDescriptor> applications_;
    std::unordered_map<ProcessIdentity, Attribution> lineage_;
    Agent agent_;
};

std::shared_ptr<MonitorSnapshot> build(bool hardWork) {
    Builder builder(PreparedMachine::now());
    builder.addApps();
    builder.addProjects();
    builder.addLone();
    if (hardWork) builder.addHardWork();
    return builder.finish();
}

} // namespace

Date PreparedMachine::now() noexcept {
    return Date::fromUnix(1'795'271'286); // a Saturday afternoon
}

std::shared_ptr<const MonitorSnapshot> PreparedMachine::busy() {
    return build(false);
}

std::shared_ptr<const MonitorSnapshot> PreparedMachine::manyFindings() {
    auto snapshot = build(true);
    const auto& vite = snapshot->services.back();
    snapshot->findings.insert(
        snapshot->findings.begin(),
        {"restarted:" + vite.id(),
         FindingKind::restarted,
         vite.name() + " started again",
         "A new instance appeared after the reviewed service stopped. A parent tool may have restarted it.",
         std::nullopt,
         {vite.root->id},
         snapshot->date});
    return snapshot;
}

std::shared_ptr<const MonitorSnapshot> PreparedMachine::calm() {
    auto snapshot = build(false);
    snapshot->findings.clear();
    return snapshot;
}

std::shared_ptr<const MonitorSnapshot> PreparedMachine::gathering() {
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = now();
    return snapshot;
}

std::shared_ptr<const MonitorSnapshot> PreparedMachine::failing() {
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = now();
    snapshot->error = "Process measurements are unavailable. Last successful update is shown.";
    return snapshot;
}

} // namespace varnet
