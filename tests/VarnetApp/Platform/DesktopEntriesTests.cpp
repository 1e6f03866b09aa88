#include "VarnetApp/Platform/linux/DesktopEntries.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <map>

namespace varnet::platform {
namespace {

using testing::ElementsAre;

std::string entry(const std::string& name, const std::string& more = {}) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more + "\n";
}

class DesktopEntriesTest : public testing::Test {
protected:
    void add(const std::string& file, const std::string& text) {
        folder.write("share/applications/" + file, text);
    }
    DesktopEntries read() {
        DesktopEntries entries(places());
        entries.refresh();
        return entries;
    }
    DesktopPlaces places() const {
        return {.applications = {folder.path("home/applications"), folder.path("share/applications")},
                .programs = {folder.path("bin")},
                .locale = "cs_CZ.UTF-8"};
    }
    static std::string nameOf(const InstalledApplication* application) {
        return application != nullptr ? application->name : "none";
    }

    TemporaryFolder folder;
};

TEST(DesktopPlaces, foldersComeFromTheEnvironmentInTheirOrder) {
    const auto from = [](std::map<std::string, std::string, std::less<>> variables) {
        return DesktopPlaces::from([variables](std::string_view name) {
            const auto found = variables.find(name);
            return found == variables.end() ? std::string() : found->second;
        });
    };
    EXPECT_THAT(
        from({{"HOME", "/home/me"}}).applications,
        ElementsAre("/home/me/.local/share/applications", "/usr/local/share/applications",
                    "/usr/share/applications", "/home/me/.local/share/flatpak/exports/share/applications",
                    "/var/lib/flatpak/exports/share/applications", "/var/lib/snapd/desktop/applications"));
    const DesktopPlaces odd = from({{"XDG_DATA_HOME", "relative"},
                                    {"XDG_DATA_DIRS", "/a/:::b:/a//./:/var/lib/snapd/desktop"},
                                    {"PATH", ".:/bin:"},
                                    {"LANG", "de_DE"},
                                    {"LC_ALL", "cs_CZ"}});
    EXPECT_THAT(odd.applications, ElementsAre("/a/applications", "/var/lib/snapd/desktop/applications",
                                              "/var/lib/flatpak/exports/share/applications"));
    EXPECT_THAT(odd.programs, ElementsAre("/bin"));
    EXPECT_EQ(odd.locale, "cs_CZ");
}

TEST_F(DesktopEntriesTest, idsFollowFoldersAndPrecedence) {
    add("org.kde.konsole.desktop", entry("Konsole", "Name[cs]=Konzole"));
    add("kde/deep/tool.desktop", entry("Tool"));
    add("nameless.desktop", "[Desktop Entry]\nType=Application\n");
    add("masked.desktop", entry("Masked"));
    add("overridden.desktop", entry("Old"));
    add("survivor.desktop", entry("Survivor"));
    add("huge.desktop", entry("Huge") + std::string(2'000'000, '#'));
    add("readme.txt", entry("Text"));
    add("\xff.desktop", entry("Unnamable"));
    add("org.flat.App.sub.desktop", entry("Flat", "X-Flatpak=org.flat.App"));
    add("signal-desktop_other.desktop", entry("Signal", "X-SnapInstanceName=signal\nX-SnapAppName=run"));
    folder.write("home/applications/masked.desktop", entry("Mask", "Hidden=true"));
    folder.write("home/applications/overridden.desktop", entry("New"));
    folder.write("home/applications/survivor.desktop", "broken");
    std::filesystem::create_directory_symlink("..", folder.path("share/applications/kde/loop"));
    ASSERT_EQ(::mkfifo(folder.path("share/applications/pipe.desktop").c_str(), 0600), 0);

    const DesktopEntries entries = read();
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"org.kde.konsole", "Konzole"},
        {"kde-deep-tool", "Tool"},
        {"nameless", "nameless"},
        {"masked", "none"},
        {"overridden", "New"},
        {"survivor", "Survivor"},
        {"huge", "none"},
        {"readme", "none"},
        {"\xff", "none"},
        {"org.flat.App", "Flat"},
        {"signal_run", "Signal"},
        {"pipe", "none"},
        {"org.kde.Konsole", "none"},
        {"", "none"},
    };
    for (const auto& [id, name] : rows) {
        EXPECT_EQ(nameOf(entries.byID(id)), name) << id;
    }
    EXPECT_EQ(entries.byID("kde-deep-tool")->path, folder.path("share/applications/kde/deep/tool.desktop"));
}

TEST_F(DesktopEntriesTest, executablesLeadToTheApplicationThatRunsThem) {
    // A start script behind a link, beside the real program in a folder of its own.
    folder.program("opt/chrome/google-chrome");
    std::filesystem::create_directories(folder.path("bin"));
    std::filesystem::create_symlink(folder.path("opt/chrome/google-chrome"),
                                    folder.path("bin/google-chrome-stable"));
    folder.program("bin/gimp-2.10");
    std::filesystem::create_symlink("gimp-2.10", folder.path("bin/gimp"));
    folder.program("bin/python3.11");
    folder.program("bin/htop");
    folder.program("opt/own/electron");

    add("chrome.desktop", entry("Chrome", "Exec=" + folder.path("bin/google-chrome-stable") + " %U"));
    add("gimp.desktop", entry("Gimp", "Exec=gimp %U"));
    add("code-handler.desktop", entry("Handler", "Exec=/usr/share/code/code --open-url %U"));
    add("code.desktop", entry("Code", "Exec=/usr/share/code/code %F"));
    add("soffice.desktop", entry("Office", "Exec=soffice"));
    add("python.desktop", entry("Python", "Exec=" + folder.path("bin/python3.11")));
    add("script.desktop", entry("Script", "Exec=sh -c 'sleep 1'"));
    add("htop.desktop", entry("Htop", "Exec=htop\nTerminal=true"));
    add("shell.desktop", entry("Desktop shell", "Exec=gnome-shell\nNoDisplay=true"));
    add("gone.desktop", entry("Gone", "Exec=gone\nTryExec=gone"));
    add("own.desktop", entry("Own", "Exec=" + folder.path("opt/own/electron") + " app.asar"));
    add("appimage.desktop", entry("Bundle", "Exec=/opt/thing/AppRun"));
    add("flat.desktop", entry("Flat", "Exec=/usr/bin/flatpak run --command=x org.flat.App"));

    const DesktopEntries entries = read();
    struct Row {
        const char* oddity;
        std::string path;
        const char* name;
    };
    const std::vector<Row> rows = {
        {"the very file", folder.path("opt/chrome/google-chrome"), "Chrome"},
        {"real program beside its start script", folder.path("opt/chrome/chrome"), "Chrome"},
        {"another program in that folder", folder.path("opt/chrome/crashpad_handler"), "none"},
        {"file behind a name in PATH", folder.path("bin/gimp-2.10"), "Gimp"},
        {"same name elsewhere", "/usr/local/bin/gimp", "Gimp"},
        {"the plainest command line wins", "/usr/share/code/code", "Code"},
        {"marked as the real program", "/usr/lib/libreoffice/program/soffice.bin", "Office"},
        {"interpreter by its very path", folder.path("bin/python3.11"), "none"},
        {"shell of a script", "/bin/sh", "none"},
        {"program for a terminal", folder.path("bin/htop"), "none"},
        {"piece of the desktop itself", "/usr/bin/gnome-shell", "none"},
        {"left over from an installation", "/usr/bin/gone", "none"},
        {"runtime in a folder of its own", folder.path("opt/own/electron"), "Own"},
        {"runtime of somebody else", "/usr/lib/electron/electron", "none"},
        {"name that anybody uses", "/tmp/.mount_x/AppRun", "none"},
        {"sandbox", "/usr/bin/flatpak", "none"},
        {"only in a shared folder together", folder.path("bin/other"), "none"},
        {"root", "/", "none"},
        {"nothing", "", "none"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(nameOf(entries.byExecutable(row.path)), row.name) << row.oddity;
    }
}

TEST_F(DesktopEntriesTest, newFilesAreSeenWhenTheirFolderHasChanged) {
    add("sub/a.desktop", entry("A"));
    DesktopEntries entries = read();
    const auto touch = [&](const std::string& path, int hours) {
        std::filesystem::last_write_time(folder.path(path), std::filesystem::file_time_type::clock::now() +
                                                                std::chrono::hours(hours));
    };
    add("sub/b.desktop", entry("B"));
    touch("share/applications/sub", 1);
    folder.write("home/applications/c.desktop", entry("C")); // the folder itself is new
    EXPECT_EQ(nameOf(entries.byID("sub-b")), "none");
    entries.refresh();
    EXPECT_EQ(nameOf(entries.byID("sub-b")), "B");
    EXPECT_EQ(nameOf(entries.byID("c")), "C");

    std::filesystem::remove(folder.path("share/applications/sub/a.desktop"));
    touch("share/applications/sub", 2);
    entries.refresh();
    EXPECT_EQ(nameOf(entries.byID("sub-a")), "none");
}

} // namespace
} // namespace varnet::platform
