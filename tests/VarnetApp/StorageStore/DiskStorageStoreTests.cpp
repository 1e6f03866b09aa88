#include "tests/VarnetApp/StorageStore/StorageStoreFixture.h"

#include <QSignalSpy>
#include <gmock/gmock.h>

namespace varnet {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

using DiskStorageStoreTest = StorageStoreFixture;

std::vector<std::string> places(const DiskStorageStore& store) {
    std::vector<std::string> paths;
    for (const StorageLocation& location : store.scan()->locations)
        paths.push_back(location.source + " " + location.path);
    return paths;
}

TEST_F(DiskStorageStoreTest, scansTheUsualPlacesTheSavedFoldersAndWhatIsObserved) {
    makeProject("seen");
    makeProject("code/mine");
    makeProject(".codex/worktrees/w");
    store->addFolder(home.path("code"), {});
    settle();
    EXPECT_THAT(places(*store), ElementsAre("Local folder " + home.path("code")))
        << "alone, as it was chosen";
    store->focusFolder(std::nullopt, {home.path("seen")});
    EXPECT_TRUE(store->scanning());
    EXPECT_EQ(store->progress(), "Finding workspaces…");
    settle();
    EXPECT_FALSE(store->scanning());
    EXPECT_THAT(places(*store),
                ElementsAre("Codex " + home.path(".codex/worktrees"), "Local folder " + home.path("code"),
                            "Observed project " + home.path("seen")));
    ASSERT_NE(project("seen"), nullptr);
    EXPECT_EQ(project("seen")->candidates.size(), 1);
    EXPECT_EQ(store->progress(), "3/3 · seen · main");
}

TEST_F(DiskStorageStoreTest, folderChoices) {
    makeProject("code/mine");
    fs::create_directory(home.path("b\xFFre"));
    fs::create_directory_symlink(home.home(), home.path("code/up"));
    fs::create_directory_symlink(home.path("code"), home.path("other"));
    const char* const refusal =
        "Choose a folder containing projects, rather than your whole disk or home folder.";
    const std::vector code{home.path("code")};
    const struct {
        const char* name;
        std::string chosen;
        const char* message;
        std::vector<std::string> saved;
        bool scans = false;
    } rows[]{
        {"the disk", "/", refusal, {}},
        {"the disk by a detour", home.home() + "/../../../../..", refusal, {}},
        {"the home folder", home.home() + "/", refusal, {}},
        {"a link to it", home.path("code/up"), refusal, {}},
        {"a folder in it", home.path("code/"), "", code, true},
        {"the same by a link: only focused", home.path("other"), "", code},
        {"a name that is no text", home.path("b\xFFre"), "", {code[0], home.path("b\xFFre")}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        store->dismissMessage();
        store->addFolder(row.chosen, {});
        EXPECT_EQ(store->message(), row.message);
        EXPECT_EQ(store->savedFolders(), row.saved);
        EXPECT_EQ(store->scanning(), row.scans);
        EXPECT_EQ(store->focusedFolder().has_value(), !row.saved.empty());
        settle();
    }
    make();
    EXPECT_EQ(store->savedFolders(), std::end(rows)[-1].saved) << "read back by the next start";
    store->focusFolder(home.path("code"), {});
    settle();
    store->removeFolder(home.path("b\xFFre"), {});
    store->removeFolder(home.path("code"), {});
    EXPECT_THAT(store->savedFolders(), IsEmpty());
    EXPECT_FALSE(store->focusedFolder());
    EXPECT_TRUE(store->scanning()) << "the page shows all places again";
    settle();
    EXPECT_EQ(project("code/mine"), nullptr);
    EXPECT_TRUE(fs::exists(home.path("code/mine/file")));
    make();
    EXPECT_THAT(store->savedFolders(), IsEmpty());
}

TEST_F(DiskStorageStoreTest, aSecondScanSilencesTheFirst) {
    makeProject("a");
    makeProject("b");
    store->refresh({home.path("a")});
    jobs.run();
    store->refresh({home.path("b")});
    QSignalSpy published(store.get(), &DiskStorageStore::scanChanged);
    main.advance(1);
    EXPECT_EQ(published.count(), 0) << "the first one's words come late";
    EXPECT_TRUE(store->scanning());
    settle();
    EXPECT_EQ(project("a"), nullptr);
    EXPECT_NE(project("b"), nullptr);

    store->refresh({home.path("a")});
    store->stopScan();
    settle();
    EXPECT_FALSE(store->scanning());
    EXPECT_THAT(store->scan()->notes,
                ElementsAre("Scan stopped. Some folders are still unmeasured. Rescan to finish."));

    store->refresh({home.path("a")});
    jobs.run();
    store.reset();
    main.advance(1); // nobody is there to hear it
}

TEST_F(DiskStorageStoreTest, movesWhatItMayAndTellsOfTheRest) {
    makeProject("r", {"web", "api"});
    store->refresh({home.path("r")});
    store->clean({{}}, {});
    EXPECT_FALSE(store->cleaning()) << "not while a scan runs";
    settle();
    const std::vector<StorageCandidate> candidates = project("r")->candidates;
    ASSERT_EQ(candidates.size(), 3);
    store->clean({}, {});
    EXPECT_FALSE(store->cleaning());

    trash.refused = {home.path("r/node_modules")};
    store->openReview(*project("r"));
    store->clean(candidates, {home.path("r")});
    EXPECT_TRUE(store->cleaning());
    store->clean(candidates, {home.path("r")}); // a second press
    jobs.run();
    main.run();
    EXPECT_FALSE(store->cleaning());
    EXPECT_FALSE(store->review());
    EXPECT_TRUE(store->scanning());
    EXPECT_EQ(store->message(), "2 moved; 1 skipped. node_modules: The Trash is full.");
    EXPECT_TRUE(store->canRevealTrash());
    std::uint64_t moved = 0;
    for (const StorageCandidate& candidate : candidates) {
        const bool stays = candidate.relativePath() == "node_modules";
        EXPECT_EQ(fs::exists(candidate.path), stays) << candidate.path;
        if (!stays) moved += candidate.bytes;
    }
    EXPECT_THAT(credited, ElementsAre(Pair(2, moved)));
    store->revealTrash();
    EXPECT_THAT(files.revealed, UnorderedElementsAre(home.path("trash/1"), home.path("trash/2")));
    settle();
    EXPECT_EQ(project("r")->candidates.size(), 1) << "measured anew";
    EXPECT_FALSE(store->message().isEmpty()) << "outlives the scan that follows";
    store->dismissMessage();
    EXPECT_EQ(store->message(), "");
    EXPECT_FALSE(store->canRevealTrash());
}

TEST_F(DiskStorageStoreTest, theWorkspaceManagerIsOpenedOrNamed) {
    store->openConductor();
    EXPECT_THAT(files.opened, ElementsAre("com.conductor.app"));
    EXPECT_EQ(store->message(), "");
    files.installed = false;
    store->openConductor();
    EXPECT_EQ(store->message(),
              "Open Conductor and archive the workspace there. This preserves its workspace records.");
}

TEST_F(DiskStorageStoreTest, preparedDataRunsNothing) {
    makeProject("r");
    make(true);
    store->setPreview(std::make_shared<const StorageScan>());
    StorageCandidate candidate;
    candidate.path = home.path("r/node_modules");
    store->refresh({home.path("r")});
    store->addFolder(home.path("r"), {});
    EXPECT_EQ(store->message(), "Example data. Add folders in the installed app.");
    store->clean({candidate}, {});
    EXPECT_EQ(store->message(), "Example data — no files were moved.");
    store->removeFolder(home.path("r"), {});
    store->reveal(home.path("r"));
    EXPECT_EQ(jobs.waiting() + main.waiting(), 0);
    EXPECT_THAT(files.revealed, IsEmpty());
    EXPECT_THAT(store->savedFolders(), IsEmpty());
}

} // namespace
} // namespace varnet
