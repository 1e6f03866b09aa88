#include "VarnetApp/Platform/linux/ControlGroup.h"
#include "VarnetApp/Platform/linux/ControlGroupFile.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <optional>

namespace varnet::platform {
namespace {

TEST(ControlGroup, pathIsTheManagersElseTheUnifiedOne) {
    struct Row {
        const char* oddity;
        std::string text;
        std::optional<std::string> path;
    };
    const std::vector<Row> rows = {
        {"version 2", "0::/user.slice/session-2.scope\n", "/user.slice/session-2.scope"},
        {"version 1 without a unified line",
         "12:pids:/user.slice\n1:name=systemd:/user.slice/session-2.scope\n", "/user.slice/session-2.scope"},
        {"hybrid, the unified one lags behind", "1:name=systemd:/a.scope\n0::/b.scope\n", "/a.scope"},
        {"hybrid, the manager's hierarchy unused", "9:name=systemd:/\n0::/b.scope\n", "/b.scope"},
        {"another manager", "1:name=elogind:/3\n", std::nullopt},
        {"another manager beside the unified one", "1:name=elogind:/3\n0::/\n", "/"},
        {"named together with a controller", "4:cpu,name=systemd:/a.scope\n", "/a.scope"},
        {"colons in the path", "0::/dbus-:1.2-org.x@0.service\n", "/dbus-:1.2-org.x@0.service"},
        {"no newline at the end", "0::/a.scope", "/a.scope"},
        {"removed group", "0::/a.scope (deleted)\n", "/a.scope"},
        {"the first line of a kind counts", "0::/a.scope\n0::/b.scope\n", "/a.scope"},
        {"hierarchy 0 with controllers", "0:cpu:/a.scope\n", std::nullopt},
        {"relative path", "0::a.scope\n", std::nullopt},
        {"one colon", "0:/a.scope\n", std::nullopt},
        {"blank lines and rubbish", "\n\n::\n\x01\xff:\n0::/a.scope\n", "/a.scope"},
        {"nothing", "", std::nullopt},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(controlGroupPath(row.text), row.path) << row.oddity;
    }
}

TEST(ControlGroup, onlyPathsOfUsersSessionsHoldApplications) {
    struct Row {
        const char* oddity;
        const char* path;
        bool inSession;
        const char* innermost;
    };
    const std::vector<Row> rows = {
        {"login session", "/user.slice/user-1000.slice/session-c2.scope", true, "session-c2.scope"},
        {"user manager", "/user.slice/user-1000.slice/user@1000.service/app.slice/x.service", true,
         "x.service"},
        {"group inside a service", "/user.slice/user@1000.service/app.slice/x.service/payload", true,
         "x.service"},
        {"no manager", "/", true, ""},
        {"another manager's number", "/3", true, ""},
        {"container without a manager", "/docker/0123abcd", true, ""},
        {"system service of the user", "/system.slice/build.service", false, "build.service"},
        {"container", "/system.slice/docker-0123abcd.scope", false, "docker-0123abcd.scope"},
        {"the machine's first process", "/init.scope", false, "init.scope"},
        {"name that the kernel keeps for itself", "/user@1.service/_cpu.x.service", true, "cpu.x.service"},
        {"doubled slashes", "//user@1.service///", true, "user@1.service"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(isInUserSession(row.path), row.inSession) << row.oddity;
        EXPECT_EQ(innermostUnit(row.path), row.innermost) << row.oddity;
    }
}

TEST(ControlGroup, fileIsReadWholeOrNotAtAll) {
    const TemporaryFolder root;
    root.write("7/cgroup", "0::/a.scope\n");
    root.write("8/cgroup", std::string(400'000, 'a'));
    std::filesystem::create_directories(root.path("9"));
    ASSERT_EQ(::mkfifo(root.path("9/cgroup").c_str(), 0600), 0);

    EXPECT_EQ(readControlGroupFile(7, root.path("")), "0::/a.scope\n");
    EXPECT_EQ(readControlGroupFile(8, root.path("")), "") << "endless";
    EXPECT_EQ(readControlGroupFile(9, root.path("")), "") << "a pipe that nobody writes";
    EXPECT_EQ(readControlGroupFile(10, root.path("")), "") << "gone";
    EXPECT_NE(readControlGroupFile(::getpid()), "") << "this very process";
}

} // namespace
} // namespace varnet::platform
