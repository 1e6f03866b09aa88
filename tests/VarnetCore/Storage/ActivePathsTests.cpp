#include "VarnetCore/Storage/ActivePaths.h"
#include "probes/SystemProbes.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace varnet {
namespace {

using testing::Contains;
using testing::UnorderedElementsAre;

FakeProcess process(std::optional<std::string> cwd, std::int32_t parent = 1, std::uint32_t uid = 501) {
    FakeProcess process;
    process.parent = parent;
    process.uid = uid;
    process.cwd = std::move(cwd);
    return process;
}

TEST(ActivePaths, FoldersAndProgramsOfThisUserAlone) {
    FakeProbes probes;
    probes.processes[1] = process("/", 0, 0);
    probes.processes[10] = process("/work");
    probes.processes[10].path = "/work/bin/node";
    probes.processes[11] = process("/secret", 1, 502);
    probes.processes[12] = process("");
    probes.processes[getpid()] = process("/ourselves");
    EXPECT_THAT(activePaths(probes).value(), UnorderedElementsAre("/work", "/work/bin/node"));
    probes.tableFails = true;
    EXPECT_EQ(activePaths(probes).error(), StorageCleanupError::incomplete);
    probes.tableFails = false;
    probes.processes.clear();
    EXPECT_EQ(activePaths(probes).error(), StorageCleanupError::incomplete);
}

TEST(ActivePaths, AGuardedProcessStandsWhereItsAncestorDoes) {
    FakeProbes probes;
    probes.processes[1] = process("/", 0, 0);
    probes.processes[10] = process("/session");
    probes.processes[11] = process({}, 10);           // guarded
    probes.processes[12] = process("/root's", 11, 0); // of another user, in between
    probes.processes[13] = process({}, 12);
    EXPECT_THAT(activePaths(probes).value(), UnorderedElementsAre("/session", "/session", "/session"));
    // With no ancestor of this user the check cannot be finished.
    probes.processes[20] = process({}, 1);
    EXPECT_EQ(activePaths(probes).error(), StorageCleanupError::incomplete);
    // The first process has none by its nature: a container's, run as this user, must not bar every move.
    probes.processes.erase(20);
    probes.processes[1] = process({}, 0);
    EXPECT_TRUE(activePaths(probes).has_value());
    // A circle, as a list read under churn may hold.
    probes.processes[20] = process({}, 21);
    probes.processes[21] = process({}, 20);
    EXPECT_EQ(activePaths(probes).error(), StorageCleanupError::incomplete);
}

TEST(ActivePaths, ALiveProcessIsSeenWhereItStands) {
    const TemporaryFolder folder;
    const ChildProcess child("/bin/sleep", {"sleep", "60"}, folder.path());
    SystemProbes probes;
    EXPECT_THAT(activePaths(probes).value(), Contains(folder.path().string()));
}

} // namespace
} // namespace varnet
