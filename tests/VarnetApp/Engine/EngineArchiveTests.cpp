#include "VarnetCore/Base/SmallFile.h"
#include "tests/VarnetApp/Engine/EngineFixture.h"

#include <sys/stat.h>

namespace varnet {
namespace {

class EngineArchiveTest : public EngineFixture {
protected:
    std::filesystem::path file() const { return folder.path() / "state/history.json"; }

    SessionArchive saved() const {
        return SessionArchive::decode(readSmallFile(file().string(), 10'000'000).value()).value();
    }

    static mode_t mode(const std::filesystem::path& path) {
        struct stat info{};
        return stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
    }

    /// An agent with a server below it, seen by one pass.
    void startAgentAndServer() {
        add(30, "claude");
        add(31, "node", 30).ports = {{3000}};
        sample();
    }
};

TEST_F(EngineArchiveTest, anotherBootStartsAfresh) {
    startAgentAndServer();
    probes.processes.erase(30);
    probes.processes[31].parent = 1;
    probes.boot += 1; // pids and starts collide; the boot does not
    restart();
    EXPECT_FALSE(process(sampleAfter(2), 31)->attribution);
    EXPECT_EQ(saved().lineage.size(), 2U) << "entries of an earlier boot stay until they are old";
}

TEST_F(EngineArchiveTest, savesAtMostEveryThirtySecondsAndPrivately) {
    startAgentAndServer();
    ASSERT_TRUE(std::filesystem::exists(file()));
    EXPECT_EQ(mode(file()), 0600U);
    EXPECT_EQ(mode(file().parent_path()), 0700U);
    std::filesystem::remove(file());
    sampleAfter(15);
    sampleAfter(15);
    EXPECT_FALSE(std::filesystem::exists(file())) << "exactly thirty seconds are not more than thirty";
    sampleAfter(2);
    EXPECT_TRUE(std::filesystem::exists(file()));
    EXPECT_EQ(saved().lineage.back().lastSeen, clock.now());
    std::filesystem::permissions(file(), std::filesystem::perms(0644));
    sampleAfter(15);
    sampleAfter(15);
    sampleAfter(2);
    EXPECT_EQ(mode(file()), 0600U);
}

TEST_F(EngineArchiveTest, buildsThatSpawnThousandsDoNotSwellTheArchive) {
    add(30, "claude");
    for (int round = 0; round < 4; ++round) {
        for (int i = 0; i < 2'000; ++i)
            add(1'000 + round * 2'000 + i, "cc1", 30);
        sampleAfter(2);
        std::erase_if(probes.processes, [](const auto& item) { return item.first >= 1'000; });
        clock.advance(14);
        sampleAfter(1);
        sampleAfter(15);
    }
    EXPECT_EQ(saved().lineage.size(), 5'000U + 2'001U)
        << "of 8,000, those still alive at the save and 5,000 more";
    EXPECT_EQ(saved().lineage.front().identity.pid, 30) << "the living stay, whatever their number";
}

TEST_F(EngineArchiveTest, unusableFileIsAnEmptyArchive) {
    startAgentAndServer();
    const auto intact = saved();
    for (const std::string& text : {std::string("{"), std::string("[]"), std::string(100'000, '[')}) {
        std::ofstream(file()) << text;
        restart();
        probes.processes.erase(30);
        probes.processes[31].parent = 1;
        EXPECT_FALSE(process(sampleAfter(2), 31)->attribution);
        EXPECT_FALSE(engine->persistenceError());
    }
    EXPECT_EQ(saved().lineage.size(), 0U);
    EXPECT_NE(intact.lineage.size(), 0U);
}

TEST_F(EngineArchiveTest, failedSaveIsToldAndTriedAgain) {
    std::ofstream(folder.path() / "state") << "a file where the folder should be";
    add(30, "claude");
    const auto snapshot = sample();
    EXPECT_FALSE(snapshot->error) << "history never stops monitoring";
    EXPECT_EQ(engine->persistenceError(),
              "History could not be saved. Live monitoring continues. Not a directory");
    std::filesystem::remove(folder.path() / "state");
    sampleAfter(15);
    sampleAfter(15);
    sampleAfter(2);
    EXPECT_FALSE(engine->persistenceError());
    EXPECT_TRUE(std::filesystem::exists(file()));
}

TEST_F(EngineArchiveTest, clearedHistoryIsForgottenAndSaved) {
    startAgentAndServer();
    engine->clearHistory();
    EXPECT_EQ(saved(), SessionArchive{});
    probes.processes.erase(30);
    probes.processes[31].parent = 1;
    EXPECT_FALSE(process(sampleAfter(2), 31)->attribution);
}

} // namespace
} // namespace varnet
