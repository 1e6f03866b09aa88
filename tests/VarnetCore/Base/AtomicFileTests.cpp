#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace varnet {
namespace {

namespace fs = std::filesystem;

class AtomicFileTest : public testing::Test {
protected:
    static unsigned mode(const fs::path& path) {
        return static_cast<unsigned>(fs::status(path).permissions());
    }
    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_.path()), {}));
    }

    TemporaryFolder folder_;
};

TEST_F(AtomicFileTest, replacesTheContentsAndNarrowsTheMode) {
    const std::string file = folder_.write("file", "a long former text");
    fs::permissions(file, fs::perms(0666));
    EXPECT_FALSE(AtomicFile::write(file, "new"));
    EXPECT_EQ(readSmallFile(file, 100), "new");
    EXPECT_EQ(mode(file), 0600U);
    EXPECT_EQ(entries(), 1U) << "no temporary file stays";
}

TEST_F(AtomicFileTest, failureLeavesTheFormerFileAndNothingElse) {
    fs::create_directories(folder_.path() / "taken/by a folder");
    EXPECT_EQ(AtomicFile::write(folder_.path() / "taken", "new"), "Is a directory");
    EXPECT_EQ(entries(), 1U);
    EXPECT_EQ(AtomicFile::write(folder_.path() / "missing/file", "new"), "No such file or directory");
}

TEST_F(AtomicFileTest, privateFolderIsMadeWithThoseAboveAndNarrowed) {
    const fs::path deep = folder_.path() / "a/b/c";
    EXPECT_FALSE(AtomicFile::makePrivateFolder(deep));
    EXPECT_EQ(mode(deep), 0700U);
    fs::permissions(deep, fs::perms(0755));
    EXPECT_FALSE(AtomicFile::makePrivateFolder(deep));
    EXPECT_EQ(mode(deep), 0700U);
    folder_.write("file", "");
    EXPECT_EQ(AtomicFile::makePrivateFolder(folder_.path() / "file"), "Not a directory");
    EXPECT_EQ(AtomicFile::makePrivateFolder(folder_.path() / "file/below"), "Not a directory");
}

} // namespace
} // namespace varnet
