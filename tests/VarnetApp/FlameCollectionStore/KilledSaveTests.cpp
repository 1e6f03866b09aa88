#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <random>
#include <thread>
#include <utility>

namespace varnet {
namespace {

/// What tells one writing of the file from the next: each makes a new one.
std::pair<ino_t, timespec> stamp(const std::filesystem::path& file) {
    struct stat info{};
    stat(file.c_str(), &info);
    return {info.st_ino, info.st_ctim};
}

bool isSame(const std::pair<ino_t, timespec>& a, const std::pair<ino_t, timespec>& b) {
    return a.first == b.first && a.second.tv_sec == b.second.tv_sec && a.second.tv_nsec == b.second.tv_nsec;
}

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
    std::uniform_int_distribution<int> microseconds(0, 10'000);
    double cleanups = 0;
    for (int round = 0; round < 300; ++round) {
        {
            const auto before = stamp(file);
            ChildProcess saver(VARNET_COLLECTION_SAVER, {"varnet_collection_saver", file.string()},
                               folder.path());
            // However busy the machine is: not before it has begun to save.
            for (int tries = 0; tries < 10'000 && isSame(stamp(file), before); ++tries)
                std::this_thread::sleep_for(std::chrono::microseconds(500));
            std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
            saver.end(SIGKILL);
        }
        const auto archive = CollectionFile::read(file);
        ASSERT_TRUE(archive) << "round " << round;
        ASSERT_GT(archive->metric("cleanups"), cleanups) << "round " << round;
        ASSERT_EQ(archive->creditedStops, fullest.creditedStops);
        cleanups = archive->metric("cleanups");
    }
}

} // namespace
} // namespace varnet
