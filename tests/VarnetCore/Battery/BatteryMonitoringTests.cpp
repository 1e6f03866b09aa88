#include "VarnetCore/Battery/BatteryMonitoring.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace varnet {
namespace {

constexpr Date now{800'000'000};
constexpr const char* unopened =
    "Saved battery history couldn’t be opened. Live readings work, but new history won’t be saved.";
constexpr const char* unsaved = "Battery history could not be saved. Live readings still work.";

/// While it lives no file of this process can grow: what a full disk does, for the superuser too.
class NoRoomForFiles {
public:
    NoRoomForFiles() : handler_(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit none{0, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    NoRoomForFiles(const NoRoomForFiles&) = delete;
    NoRoomForFiles& operator=(const NoRoomForFiles&) = delete;
    ~NoRoomForFiles() {
        setrlimit(RLIMIT_FSIZE, &before_);
        signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

class BatteryMonitoringTest : public testing::Test {
protected:
    std::filesystem::path state() const { return folder.path() / "state"; }
    std::filesystem::path file() const { return state() / "battery-history.json"; }

    static std::string contents(const std::filesystem::path& path) {
        std::stringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    static unsigned mode(const std::filesystem::path& path) {
        return static_cast<unsigned>(std::filesystem::status(path).permissions());
    }
    static BatteryArchive archiveWithAPoint(double charge) {
        BatteryArchive archive;
        archive.points.push_back({now - 60, charge, BatteryState::charging, {}, Uuid::random()});
        return archive;
    }
    std::vector<std::filesystem::path> backups() const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(state())) {
            if (entry.path().filename().string().starts_with("battery-before-restore-"))
                found.push_back(entry.path());
        }
        return found;
    }

    TemporaryFolder folder;
};

TEST_F(BatteryMonitoringTest, savesPrivatelyAndReadsBack) {
    BatteryMonitoring monitoring(state(), now);
    EXPECT_FALSE(monitoring.warning);
    EXPECT_EQ(monitoring.reading.date, Date::distantPast());
    monitoring.tracker = BatteryTracker(archiveWithAPoint(50));
    monitoring.save();
    EXPECT_FALSE(monitoring.warning);
    EXPECT_EQ(mode(file()), 0600U);
    EXPECT_EQ(mode(state()), 0700U);
    folder.write("state/battery-history.json.tmp",
                 "{\"version\":"); // as a crash between two writes leaves it
    EXPECT_EQ(BatteryMonitoring(state(), now).tracker.archive(), monitoring.tracker.archive());
    EXPECT_TRUE(BatteryMonitoring(state(), now + 8 * 86'400).tracker.archive().points.empty())
        << "pruned as it is loaded";
}

TEST_F(BatteryMonitoringTest, fileThatCannotBeUnderstoodIsNeverWrittenOver) {
    const std::string whole = archiveWithAPoint(50).encode();
    std::string newer = whole;
    newer.replace(newer.find("\"version\":1"), 11, "\"version\":2");
    using Row = std::tuple<const char*, std::string>;
    for (const auto& [oddity, text] : std::vector<Row>{{"of a newer version", newer},
                                                       {"cut off", whole.substr(0, whole.size() / 2)},
                                                       {"empty", ""},
                                                       {"no JSON", "history"},
                                                       {"not UTF-8", "\xff\xfe"},
                                                       {"nested without end", std::string(100'000, '[')}}) {
        SCOPED_TRACE(oddity);
        folder.write("state/battery-history.json", text);
        BatteryMonitoring monitoring(state(), now);
        EXPECT_EQ(monitoring.warning, unopened);
        EXPECT_EQ(monitoring.tracker.archive(), BatteryArchive{});
        monitoring.tracker = BatteryTracker(archiveWithAPoint(10));
        monitoring.save();
        EXPECT_EQ(monitoring.warning, unopened);
        EXPECT_EQ(contents(file()), text);
    }
    std::filesystem::remove(file());
    std::filesystem::create_directory(file());
    EXPECT_EQ(BatteryMonitoring(state(), now).warning, unopened) << "something else of that name";
}

TEST_F(BatteryMonitoringTest, savingThatFailsIsTriedAgain) {
    folder.write("state", "a file where the folder should be");
    BatteryMonitoring monitoring(state(), now);
    EXPECT_FALSE(monitoring.warning);
    monitoring.save();
    EXPECT_EQ(monitoring.warning, unsaved);
    EXPECT_TRUE(monitoring.canSave);
    std::filesystem::remove(state());
    monitoring.save();
    EXPECT_FALSE(monitoring.warning);
    EXPECT_TRUE(std::filesystem::exists(file()));
}

/// Killed at any moment, the program leaves the one history or the other, never half of one.
TEST_F(BatteryMonitoringTest, aKilledSaveLeavesAWholeFile) {
    std::vector<BatteryArchive> written(2);
    for (int i = 3000; i > 0; --i)
        written[1].points.push_back({now - 1 - i, 50, BatteryState::charging, {}, Uuid::random()});
    written[0].points.assign(written[1].points.begin() + 1000, written[1].points.end());
    BatteryMonitoring monitoring(state(), now);
    monitoring.tracker = BatteryTracker(written[0]);
    monitoring.save();
    for (int round = 0; round < 6; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (std::size_t i = 0;; ++i) {
                monitoring.tracker = BatteryTracker(written[i % 2]);
                monitoring.save();
            }
        }
        ASSERT_GT(child, 0);
        usleep(20'000 + static_cast<useconds_t>(round) * 3'700);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const BatteryMonitoring next(state(), now);
        EXPECT_FALSE(next.warning);
        EXPECT_TRUE(next.tracker.archive() == written[0] || next.tracker.archive() == written[1]);
    }
}

TEST_F(BatteryMonitoringTest, aFullDiskLeavesTheFileAsItWas) {
    BatteryMonitoring monitoring(state(), now);
    monitoring.tracker = BatteryTracker(archiveWithAPoint(50));
    monitoring.save();
    const std::string before = contents(file());
    monitoring.tracker = BatteryTracker(archiveWithAPoint(60));
    {
        const NoRoomForFiles full;
        monitoring.save();
    }
    EXPECT_EQ(monitoring.warning, unsaved);
    EXPECT_EQ(contents(file()), before);
    monitoring.save();
    EXPECT_FALSE(monitoring.warning);
    EXPECT_NE(contents(file()), before);
}

TEST_F(BatteryMonitoringTest, restoreKeepsTheFileBeforeIt) {
    BatteryMonitoring monitoring(state(), now);
    EXPECT_EQ(monitoring.restore(archiveWithAPoint(10), now), std::nullopt);
    EXPECT_TRUE(backups().empty()) << "there was nothing to keep";
    const std::string first = contents(file());
    monitoring.reading.date = now;
    EXPECT_EQ(monitoring.restore(archiveWithAPoint(20), now), std::nullopt);
    EXPECT_EQ(monitoring.reading.date, Date::distantPast());
    ASSERT_EQ(backups().size(), 1U);
    EXPECT_EQ(contents(backups()[0]), first);
    EXPECT_EQ(mode(backups()[0]), 0600U);
    EXPECT_EQ(monitoring.restore(archiveWithAPoint(30), now + 8 * 86'400), std::nullopt);
    EXPECT_EQ(backups().size(), 2U);
    EXPECT_TRUE(BatteryMonitoring(state(), now).tracker.archive().points.empty()) << "pruned as of now";
}

TEST_F(BatteryMonitoringTest, restoreWithoutACopyChangesNothing) {
    std::filesystem::create_directories(file()); // no copy can be made of a folder
    BatteryMonitoring monitoring(state(), now);
    monitoring.tracker = BatteryTracker(archiveWithAPoint(50));
    const BatteryArchive before = monitoring.tracker.archive();
    EXPECT_TRUE(monitoring.restore(archiveWithAPoint(10), now));
    EXPECT_EQ(monitoring.tracker.archive(), before);
    EXPECT_TRUE(backups().empty());
}

} // namespace
} // namespace varnet
