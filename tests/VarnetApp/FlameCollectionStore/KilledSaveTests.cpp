#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <thread>

namespace varnet {
namespace {

/// The program is ended without warning, wherever it is in its saving, 300 times over: every time the file is
/// whole, and nothing that was in it once has gone.
TEST(KilledSave, leavesAReadableCollection) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "state" / CollectionFile::name;
    FlameArchive fullest = FlameArchive::beginning({800'000'000});
    for (int number = 0; number < 2000; ++number)
        fullest.creditedStops.push_back("1700000000:" + std::to_string(number) + ":1700000000000000");
    ASSERT_EQ(CollectionFile::write(file, fullest), std::nullopt);

    std::mt19937 random(7);
    std::uniform_int_distribution<int> microseconds(0, 25'000);
    double cleanups = 0;
    int advanced = 0;
    for (int round = 0; round < 300; ++round) {
        {
            ChildProcess saver(VARNET_COLLECTION_SAVER, {"varnet_collection_saver", file.string()},
                               folder.path());
            std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
            saver.end(SIGKILL);
        }
        const auto archive = CollectionFile::read(file);
        ASSERT_TRUE(archive) << "round " << round;
        ASSERT_GE(archive->metric("cleanups"), cleanups) << "round " << round;
        ASSERT_EQ(archive->creditedStops, fullest.creditedStops);
        if (archive->metric("cleanups") > cleanups) ++advanced;
        cleanups = archive->metric("cleanups");
    }
    EXPECT_GT(advanced, 20) << "most were ended before they saved anything, which shows nothing";
}

} // namespace
} // namespace varnet
