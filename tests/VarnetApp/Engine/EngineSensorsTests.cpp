#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Battery/BatteryTracker.h"
#include "tests/VarnetApp/Engine/EngineFixture.h"

namespace varnet {
namespace {

class FakeBattery final : public BatteryReader {
public:
    BatteryReading read(Date at) override {
        ++reads;
        BatteryReading reading = next;
        reading.date = at;
        return reading;
    }

    BatteryReading next = BatteryReading::missing(BatteryAvailability::available, {});
    int reads = 0;
};

class EngineSensorsTest : public EngineFixture {
protected:
    EngineSensorsTest() {
        source.next.state = BatteryState::onBattery;
        source.next.charge = 70;
        source.next.watts = -9;
        battery = &source;
        restart();
    }
    std::filesystem::path file() const { return folder.path() / "state/battery-history.json"; }
    std::string saved() const { return readSmallFile(file().string(), 10'000'000).value(); }

    FakeBattery source;
};

TEST_F(EngineSensorsTest, fanAvailabilityFollowsTheProbes) {
    const std::vector<VNFan> turning{{.id = 0, .rpm = 2000, .maximum = 5000},
                                     {.id = 1, .rpm = 1800, .maximum = 0}};
    struct Row {
        const char* oddity;
        std::optional<std::vector<VNFan>> fans;
        FanAvailability expected;
    };
    for (const Row& row : std::vector<Row>{
             {"none at first is no proof of none", std::vector<VNFan>{}, FanAvailability::unavailable},
             {"unreadable at first", std::nullopt, FanAvailability::unavailable},
             {"turning", turning, FanAvailability::available},
             {"lost", std::nullopt, FanAvailability::stale},
             {"still lost", std::vector<VNFan>{}, FanAvailability::stale},
             {"found again", turning, FanAvailability::available},
             {"a speed that cannot be", std::vector<VNFan>{{.id = 0, .rpm = 20'001, .maximum = 0}},
              FanAvailability::unavailable},
         }) {
        SCOPED_TRACE(row.oddity);
        probes.fanRecords = row.fans;
        const Snapshot snapshot = sampleAfter(5);
        EXPECT_EQ(snapshot->fans.availability, row.expected);
        EXPECT_EQ(snapshot->fans.fans.size(), row.expected == FanAvailability::available ? 2U : 0U);
        EXPECT_EQ(snapshot->fans.measuredAt, clock.now());
    }
    probes.fanRecords = turning;
    const Snapshot last = sampleAfter(5);
    EXPECT_EQ(last->fans.fans[0].maximum, 5000);
    EXPECT_FALSE(last->fans.fans[1].maximum);

    probes.modelName = "Mac14,2";
    probes.fanRecords.reset();
    restart();
    EXPECT_EQ(sample()->fans.availability, FanAvailability::fanless);
}

TEST_F(EngineSensorsTest, fansAreAskedEveryFiveSecondsAndForgottenBySleep) {
    probes.fanRecords = {{{.id = 0, .rpm = 3500, .maximum = 5000}}};
    sample();
    for (const int asked : {1, 1, 2, 2, 2, 3, 3, 3})
        EXPECT_EQ((sampleAfter(2), probes.calls.fans), asked);
    EXPECT_EQ(sample()->fans.level, FanLevel::vacuum);
    engine->resetAfterSleep();
    EXPECT_EQ(sampleAfter(2)->fans.level, FanLevel::stopped);
}

TEST_F(EngineSensorsTest, batteryIsReadInItsOwnRhythm) {
    EXPECT_EQ(sample()->battery->reading.charge, 70);
    EXPECT_EQ(source.reads, 1);
    source.next.charge = 69;
    const Snapshot between = sampleAfter(2);
    EXPECT_EQ(between->battery->reading.charge, 70) << "observed again, not read again";
    sampleAfter(2);
    EXPECT_EQ(sampleAfter(2)->battery->reading.charge, 69);
    EXPECT_EQ(source.reads, 2);
    const Snapshot metrics = sampleAfter(5, false);
    EXPECT_EQ(sampleAfter(2, false)->battery, metrics->battery) << "a pass without metrics carries it on";
}

TEST_F(EngineSensorsTest, aFailedPassStillReadsTheBattery) {
    sample();
    source.next.charge = 60;
    probes.tableFails = true;
    const Snapshot failed = sampleAfter(6);
    ASSERT_TRUE(failed->error);
    EXPECT_EQ(failed->battery->reading.charge, 60);
}

TEST_F(EngineSensorsTest, historyIsSavedEveryThirtySecondsAndSurvives) {
    sample();
    ASSERT_TRUE(std::filesystem::exists(file()));
    std::filesystem::remove(file());
    for (int second = 0; second < 28; second += 2)
        sampleAfter(2);
    EXPECT_FALSE(std::filesystem::exists(file()));
    const Snapshot last = sampleAfter(2);
    EXPECT_TRUE(std::filesystem::exists(file())) << "at thirty seconds already";
    restart();
    const Snapshot next = sampleAfter(2);
    EXPECT_EQ(next->battery->archive.points->size(), last->battery->archive.points->size() + 1);
    EXPECT_EQ(next->battery->archive.sessions.size(), 2U) << "a restart begins a new session";
}

TEST_F(EngineSensorsTest, sleepEndsTheSessionAndSaves) {
    sample();
    const auto session = sampleAfter(2)->battery->currentSessionID;
    ASSERT_TRUE(session);
    std::filesystem::remove(file());
    const int before = source.reads;
    engine->resetAfterSleep();
    EXPECT_TRUE(std::filesystem::exists(file()));
    EXPECT_NE(sampleAfter(2)->battery->currentSessionID, session);
    EXPECT_EQ(source.reads, before + 1);
}

TEST_F(EngineSensorsTest, aHistoryOfANewerVersionStaysUntilTheUserClearsIt) {
    const std::string newer = R"({"version":2,"points":[],"health":[],"sessions":[]})";
    folder.write("state/battery-history.json", newer);
    restart();
    const Snapshot snapshot = sampleAfter(31);
    ASSERT_TRUE(snapshot->battery->warning);
    EXPECT_EQ(snapshot->battery->warning, engine->batteryWarning());
    EXPECT_EQ(snapshot->battery->reading.charge, 70) << "live readings flow";
    engine->resetAfterSleep();
    EXPECT_EQ(saved(), newer);
    engine->clearHistory();
    EXPECT_FALSE(engine->batteryWarning());
    EXPECT_EQ(BatteryArchive::decode(saved()), BatteryArchive{});
    EXPECT_FALSE(sampleAfter(2)->battery->warning);
}

TEST_F(EngineSensorsTest, restoredHistoryShowsWithTheNextPass) {
    sample();
    BatteryArchive archive;
    archive.health.push_back({clock.now() - 86'400, 91, 10});
    EXPECT_EQ(engine->restoreBattery(archive), std::nullopt);
    const int before = source.reads;
    const Snapshot snapshot = sampleAfter(2);
    EXPECT_EQ(snapshot->battery->archive.health->size(), 1U);
    EXPECT_EQ(source.reads, before + 1);
}

} // namespace
} // namespace varnet
