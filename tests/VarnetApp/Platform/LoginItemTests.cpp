#include "VarnetApp/Platform/linux/AutostartEntry.h"
#include "VarnetApp/Platform/linux/AutostartLoginItem.h"
#include "VarnetCore/Base/SmallFile.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <thread>

namespace varnet::platform {
namespace {

using Status = LoginItemStatus;

class LoginItemTest : public testing::Test {
protected:
    AutostartLoginItem item(const std::string& executable = "/opt/varnet/varnet") const {
        return AutostartLoginItem({.executable = executable,
                                   .configHome = folder.path("config"),
                                   .desktops = {"ubuntu", "GNOME"},
                                   .programs = {folder.path("bin")}});
    }
    std::string contents() const { return readSmallFile(file, 1 << 20).value_or("(none)"); }

    TemporaryFolder folder;
    const std::string file = folder.path("config/autostart/com.varnet.Varnet.desktop");
};

TEST_F(LoginItemTest, comesAndGoes) {
    AutostartLoginItem login = item();
    EXPECT_EQ(login.status(), Status::notRegistered);
    EXPECT_TRUE(login.unregisterItem()) << "there is none, which is what was asked for";
    EXPECT_TRUE(login.registerItem());
    EXPECT_EQ(login.status(), Status::enabled);
    EXPECT_THAT(contents(), testing::HasSubstr("\nExec=\"/opt/varnet/varnet\" --login\n"));
    EXPECT_TRUE(login.unregisterItem());
    EXPECT_EQ(login.status(), Status::notRegistered);
    EXPECT_EQ(contents(), "(none)");
}

TEST_F(LoginItemTest, oddPathsAreQuotedSoThatTheyStart) {
    // What the file holds, as launchers read it: escapes of the value first, then quotes, then percent signs.
    const std::map<std::string, std::string> rows{
        {"/opt/my apps/varnet", R"("/opt/my apps/varnet" --login)"},
        {"/opt/100%u/varnet", R"("/opt/100%%u/varnet" --login)"},
        {R"(/opt/$HOME`x`"q"/varnet)", R"("/opt/\\$HOME\\`x\\`\\"q\\"/varnet" --login)"},
        {R"(/opt/back\slash/varnet)", R"("/opt/back\\\\slash/varnet" --login)"},
        {"/opt/new\nline/varnet", R"("/opt/new\nline/varnet" --login)"},
        {"/opt/Příliš/varnet", R"("/opt/Příliš/varnet" --login)"},
    };
    for (const auto& [executable, exec] : rows) {
        const std::string text = autostartEntryText(executable);
        EXPECT_THAT(text, testing::HasSubstr("\nExec=" + exec + "\n"));
        EXPECT_TRUE(parseAutostartEntry(text).starts(executable)) << text;
    }
    EXPECT_FALSE(item("/opt/\xff/varnet").registerItem()) << "no desktop reads bytes that are no text";
}

TEST_F(LoginItemTest, entriesThatOthersHaveTouched) {
    const std::string exec = "Exec=\"/opt/varnet/varnet\" --login\n";
    const std::string group = "[Desktop Entry]\n";
    using enum LoginItemStatus;
    struct Row {
        const char* name;
        std::string text;
        Status status;
        Status registered; ///< after registering
    };
    const Row rows[] = {
        {"masked whole", group + "Hidden=true\n", requiresApproval, requiresApproval},
        {"switched off", group + exec + "X-GNOME-Autostart-enabled=false\n", requiresApproval,
         requiresApproval},
        {"switched off by the last of two", group + "Hidden=false\n" + exec + "Hidden=true\n",
         requiresApproval, requiresApproval},
        {"a setting of another group", group + exec + "[Desktop Action x]\nHidden=true\n", enabled, enabled},
        {"moved program", group + "Exec=/usr/bin/varnet --login\n", notRegistered, enabled},
        {"would open the window", group + "Exec=/opt/varnet/varnet\n", notRegistered, enabled},
        {"with settings", group + "Exec=env A=1 /opt/varnet/varnet --login\n", enabled, enabled},
        {"no entry at all", std::string("\0\xff[", 3), notRegistered, enabled},
        {"empty", "", notRegistered, enabled},
    };
    AutostartLoginItem login = item();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        folder.write("config/autostart/com.varnet.Varnet.desktop", row.text);
        EXPECT_EQ(login.status(), row.status);
        EXPECT_TRUE(login.registerItem());
        EXPECT_EQ(login.status(), row.registered);
        if (row.status == row.registered) {
            EXPECT_EQ(contents(), row.text) << "nothing to do";
        }
        EXPECT_TRUE(login.unregisterItem());
    }
}

TEST_F(LoginItemTest, whatIsInTheWayIsNamedAndKept) {
    namespace fs = std::filesystem;
    AutostartLoginItem login = item();
    const std::string kept = folder.write("dotfiles/varnet.desktop", "theirs");
    fs::create_directories(folder.path("config/autostart"));
    fs::create_symlink(kept, file);
    EXPECT_EQ(login.registerItem().error(), file + ": Is a symbolic link");
    EXPECT_EQ(contents(), "theirs");
    fs::remove(file);

    fs::create_directories(file);
    EXPECT_EQ(login.registerItem().error(), file + ": Is a directory");
    EXPECT_EQ(login.unregisterItem().error(), file + ": Is a directory");
    fs::remove_all(folder.path("config/autostart"));

    folder.write("config/autostart", "a file where the folder should be");
    EXPECT_EQ(login.registerItem().error(), file + ": Not a directory");
    EXPECT_TRUE(login.unregisterItem());
}

TEST_F(LoginItemTest, desktopsFolderKeepsItsPermissions) {
    const std::string autostart = folder.path("config/autostart");
    std::filesystem::create_directories(autostart);
    std::filesystem::permissions(autostart, std::filesystem::perms(0755));
    EXPECT_TRUE(item().registerItem());
    struct stat info{};
    ASSERT_EQ(stat(autostart.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0755u);
}

TEST_F(LoginItemTest, whereThereCanBeNone) {
    EXPECT_EQ(item("").status(), Status::notFound);
    EXPECT_FALSE(item("").registerItem());
    AutostartLoginItem homeless({.executable = "/varnet", .configHome = {}, .desktops = {}, .programs = {}});
    EXPECT_EQ(homeless.status(), Status::notFound);
    EXPECT_TRUE(homeless.unregisterItem());
}

TEST_F(LoginItemTest, placesComeFromTheEnvironment) {
    const auto parts = [](std::map<std::string_view, std::string> environment) {
        return AutostartLoginItem::Parts::from("/varnet", [&](std::string_view name) {
            const auto found = environment.find(name);
            return found == environment.end() ? std::string() : found->second;
        });
    };
    EXPECT_EQ(parts({{"HOME", "/home/u"}, {"XDG_CONFIG_HOME", "/cfg"}}).configHome, "/cfg");
    EXPECT_EQ(parts({{"HOME", "/home/u"}, {"XDG_CONFIG_HOME", "cfg"}}).configHome, "/home/u/.config");
    EXPECT_EQ(parts({}).configHome, "");
    EXPECT_THAT(parts({{"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"}}).desktops,
                testing::ElementsAre("ubuntu", "GNOME"));
}

TEST_F(LoginItemTest, settingsOfTheDesktopThatRuns) {
    AutostartLoginItem login = item();
    folder.program("bin/xfce4-session-settings"); // of another desktop
    EXPECT_FALSE(login.openSettings());
    const std::string trace = folder.path("trace");
    folder.program("bin/gnome-tweaks");
    folder.write("bin/gnome-tweaks", "#!/bin/sh\necho opened > " + trace + "\n");
    EXPECT_TRUE(login.openSettings());
    for (int i = 0; i < 1000 && readSmallFile(trace, 100) != "opened\n"; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(readSmallFile(trace, 100), "opened\n");
}

} // namespace
} // namespace varnet::platform
