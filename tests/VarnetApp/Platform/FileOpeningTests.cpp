#include "VarnetApp/Platform/linux/DesktopFileOpening.h"
#include "VarnetCore/Base/SmallFile.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace varnet::platform {
namespace {

class FileOpeningTest : public BusTest {
protected:
    /// A program that writes down what it was asked to open.
    void installOpener() {
        folder.program("bin/xdg-open");
        folder.write("bin/xdg-open", "#!/bin/sh\nprintf '%s|' \"$@\" > " + folder.path("new") + " && mv " +
                                         folder.path("new") + " " + folder.path("opened") + "\n");
    }
    /// Whether the opener was asked for one thing, and for nothing else at a time.
    bool opened(const std::string& what) {
        const bool seen =
            eventually([&] { return readSmallFile(folder.path("opened"), 4096) == what + "|"; });
        std::filesystem::remove(folder.path("opened"));
        return seen;
    }
    DesktopFileOpening opening() { return DesktopFileOpening(bus.address(), {folder.path("bin")}); }
};

TEST_F(FileOpeningTest, onlyTheWebAndMailAreOpened) {
    installOpener();
    DesktopFileOpening files = opening();
    for (const char* url : {"http://localhost:5173", "https://[::1]:8080/a?b=c#d",
                            "mailto:feedback@example.org?subject=Hot%20flame"}) {
        EXPECT_TRUE(files.openUrl(url)) << url;
        EXPECT_TRUE(opened(url)) << url;
    }
    for (const char* url : {"", "localhost:3000", "file:///etc/passwd", "javascript:alert(1)", "-help",
                            "/bin/sh", "http://", "http://a b/", "http://localhost:99999", "ssh://host"}) {
        EXPECT_FALSE(files.openUrl(url)) << url;
    }
}

TEST_F(FileOpeningTest, fileManagerShowsTheFileInItsFolder) {
    installOpener();
    const std::string file = folder.write("a b/100%\xff.txt", "");
    BusPeer manager(bus.address(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1");
    manager.answer("ShowItems", QVariantList());
    manager.appear();
    DesktopFileOpening files = opening();
    EXPECT_TRUE(files.revealFile(file));
    ASSERT_TRUE(eventually([&] { return manager.calls("ShowItems").size() == 1; }));
    const QDBusMessage call = manager.calls("ShowItems").at(0);
    EXPECT_EQ(call.signature(), "ass");
    EXPECT_EQ(call.arguments().at(0).toStringList().value(0).toStdString(),
              "file://" + folder.path("a%20b/100%25%FF.txt"));

    manager.answer("ShowItems", [](const QDBusMessage& asked) {
        return asked.createErrorReply(QDBusError::Failed, "no display");
    });
    EXPECT_TRUE(files.revealFile(file));
    EXPECT_TRUE(opened(folder.path("a b"))) << "a manager that fails leaves the folder to the opener";
    EXPECT_FALSE(files.revealFile(folder.path("gone")));
    EXPECT_FALSE(files.revealFile("a b"));
}

TEST_F(FileOpeningTest, portalIsTheLastResort) {
    const std::string file = folder.write("x/file", "");
    DesktopFileOpening files = opening();
    EXPECT_FALSE(files.openUrl("http://localhost:1"));
    EXPECT_FALSE(files.revealFile(file));

    BusPeer portal(bus.address(), "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop");
    portal.appear();
    EXPECT_TRUE(files.openUrl("http://localhost:1"));
    EXPECT_TRUE(files.revealFile(file));
    ASSERT_TRUE(eventually([&] { return portal.calls("OpenDirectory").size() == 1; }));
    EXPECT_EQ(portal.calls("OpenDirectory").at(0).signature(), "sha{sv}");
    ASSERT_EQ(portal.calls("OpenURI").size(), 1);
    EXPECT_EQ(portal.calls("OpenURI").at(0).signature(), "ssa{sv}");
    EXPECT_EQ(portal.calls("OpenURI").at(0).arguments().at(1), "http://localhost:1");
}

TEST_F(FileOpeningTest, withoutABusTheOpenerDoes) {
    installOpener();
    DesktopFileOpening files({}, {folder.path("bin")});
    EXPECT_TRUE(files.revealFile(folder.write("x/file", "")));
    EXPECT_TRUE(opened(folder.path("x")));
}

} // namespace
} // namespace varnet::platform
