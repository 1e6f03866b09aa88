#include "VarnetCore/Battery/BatteryTracker.h"
#include "VarnetCore/Findings/FindingEngine.h"
#include "VarnetCore/Hall/FlameCollection.h"
#include "VarnetCore/Monitoring/SnapshotAssembler.h"
#include "tests/VarnetApp/CloudStore/CloudFixture.h"

#include <gmock/gmock.h>

namespace varnet {
namespace {

constexpr std::uint32_t user = 1000;
constexpr int step = 10; ///< seconds between two passes

/// What nobody else may ever read. None is a part of a name that may go out.
const std::vector<std::string> secrets{"quentin",   "marlowe",                  // a user, and the home folder
                                       "zanzibar",  "ledgerbook", "Atlasworks", // projects
                                       "xylophone", "peregrine",                // a branch and a worktree
                                       "swordfish", "tangerine", // arguments: a password, a file
                                       "obsidian",               // a working directory
                                       "vermilion", "overtime",   "/home",      "/usr", "/opt", ".desktop"};

ProcessSample process(std::int32_t pid, std::int32_t parent, const std::string& executable,
                      std::vector<std::string> arguments, Date now) {
    ProcessSample sample;
    sample.id = {1'790'000'000, pid, static_cast<std::uint64_t>(now.sinceUnixEpoch() - 90'000) * 1'000'000};
    sample.parentPID = parent;
    sample.uid = user;
    sample.name = executable.substr(executable.rfind('/') + 1);
    sample.executable = executable;
    sample.arguments = std::move(arguments);
    sample.cwd = "/home/quentin-marlowe/obsidian";
    sample.cpu = sample.averageCPU = 85 + pid;
    sample.memory = 100'000'000;
    sample.energyImpact = sample.instantaneousEnergyImpact = 5;
    sample.portsAvailable = true;
    return sample;
}

std::shared_ptr<const Project> project(const std::string& root, const std::string& name) {
    return std::make_shared<const Project>(Project{root, root, name, "feature/xylophone"});
}

/// A machine whose every text that is not a program's name gives something away.
class TellingMachine {
public:
    std::shared_ptr<const MonitorSnapshot> pass(Date now) {
        const Date started = now - std::fmod(now.seconds, 86'400.0); // so that identities stay
        std::vector<ProcessSample> samples;
        samples.push_back(process(1, 0, "/usr/lib/systemd/systemd", {"systemd"}, started));
        samples.push_back(process(2, 1, "/usr/bin/claude", {"claude", "--resume", "swordfish"}, started));
        samples.push_back(process(3, 2, "/usr/bin/node",
                                  {"node", "node_modules/.bin/vite", "--port", "8471", "tangerine.config.js"},
                                  started));
        samples.back().ports = {8471};
        samples.back().project = project("/home/quentin-marlowe/zanzibar", "zanzibar");
        samples.push_back(process(4, 1, "/usr/bin/node",
                                  {"node", "node_modules/.bin/vite", "--port", "8472", "tangerine.config.js"},
                                  started));
        samples.back().ports = {8472};
        samples.back().project = project("/home/quentin-marlowe/ledgerbook", "ledgerbook");
        samples.push_back(process(5, 1, "/opt/meridian/meridian", {"meridian", "--user=quentin"}, started));
        samples.push_back(process(6, 5, "/opt/meridian/helper", {"helper", "--vermilion"}, started));
        samples.push_back(
            process(7, 1, "/usr/bin/python3", {"python3", "/home/quentin-marlowe/x.py"}, started));
        samples.back().project = project("/home/quentin-marlowe/peregrine", "Atlasworks");
        const std::vector<ApplicationDescriptor> applications{
            {"/home/quentin-marlowe/.local/share/applications/meridian.desktop", "meridian", "Meridian", 5,
             std::nullopt}};
        auto assembled = assembler_.assemble(std::move(samples), applications, now, user);

        auto snapshot = std::make_shared<MonitorSnapshot>();
        snapshot->date = now;
        snapshot->findings =
            findings_.evaluate(assembled.groups, assembled.services, assembled.processes, now);
        findingsSeen += snapshot->findings.size();
        BatteryReading reading = BatteryReading::missing(BatteryAvailability::available, now);
        reading.state = static_cast<std::int64_t>(now.seconds / 3600) % 2 == 0 ? BatteryState::onBattery
                                                                               : BatteryState::charging;
        reading.charge = 50;
        reading.health = 90;
        reading.watts = -8;
        snapshot->battery =
            std::make_shared<const BatteryDashboard>(battery_.observe(reading, assembled.groups, now));
        snapshot->processes = std::move(assembled.processes);
        snapshot->groups = std::move(assembled.groups);
        snapshot->services = std::move(assembled.services);
        snapshot->systemCPU = 40;
        snapshot->logicalCores = 8;
        snapshot->physicalMemory = 17'179'869'184;
        return snapshot;
    }

    std::size_t findingsSeen = 0;

private:
    SnapshotAssembler assembler_;
    FindingEngine findings_;
    BatteryTracker battery_;
};

TEST_F(CloudTest, aDayOfWorkGivesNothingAway) {
    signIn();
    backUp("community");
    store->start();
    TellingMachine machine;
    FlameCollection flame(FlameArchive::beginning(clock.now()));
    for (int second = 0; second < 86'400; second += step) {
        // Ten minutes of each hour at work, and asleep for the rest.
        if (second % 3600 == 600) {
            second += 3000;
            queue.advance(3000);
        }
        queue.advance(step);
        settle();
        const auto snapshot = machine.pass(clock.now());
        if (second == 0) {
            ASSERT_GE(snapshot->groups.size(), 4U);
            ASSERT_EQ(snapshot->services.size(), 2U);
        }
        flame.observe(*snapshot);
        for (const GroupKind kind : {GroupKind::application, GroupKind::project, GroupKind::system})
            flame.inspect(kind, clock.now());
        store->observe(snapshot, flame.archive());
        queue.run();
    }
    cycle();
    EXPECT_GT(machine.findingsSeen, 0U);

    // What was sealed, opened again: names that may go out are there, so what is searched is the real thing.
    std::string unsealed;
    for (const CloudTestService::Request& request : service.requests())
        unsealed += request.values.dump();
    for (const char* const name :
         {"\"Meridian\"", "\"Projects\"", "\"claude\"", "\"discharging\"", "\"seconds\""})
        EXPECT_NE(unsealed.find(name), std::string::npos) << name;
    std::set<std::string> kinds;
    for (const auto& [key, record] : service.records())
        kinds.insert(std::get<0>(key));
    EXPECT_THAT(kinds, testing::ElementsAre("app", "battery", "collection", "day", "health", "session"));
    const std::string wire = service.received().toStdString();
    for (const std::string& secret : secrets) {
        EXPECT_EQ(unsealed.find(secret), std::string::npos)
            << secret
            << " in: " << unsealed.substr(std::max<std::size_t>(unsealed.find(secret), 80) - 80, 160);
        // Four letters come about in sealed text by chance.
        EXPECT_TRUE(secret.size() < 6 || wire.find(secret) == std::string::npos) << secret;
    }
    EXPECT_THAT(service.complaints(), testing::IsEmpty());
}

} // namespace
} // namespace varnet
