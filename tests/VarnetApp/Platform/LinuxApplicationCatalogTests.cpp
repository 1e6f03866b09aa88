#include "VarnetApp/Platform/linux/LinuxApplicationCatalog.h"
#include "tests/VarnetApp/Platform/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnet::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeEvents final : public UnitEvents {
public:
    struct Record {
        Handlers handlers;
        int calls = 0;
    };
    explicit FakeEvents(std::shared_ptr<Record> record) : record_(std::move(record)) {}
    void listen(Handlers handlers) override {
        record_->handlers = std::move(handlers);
        ++record_->calls;
    }

private:
    const std::shared_ptr<Record> record_;
};

class LinuxApplicationCatalogTest : public testing::Test {
protected:
    LinuxApplicationCatalogTest() {
        machine.install("firefox", "Exec=/usr/lib/firefox/firefox %u");
        machine.install("foot", "Exec=foot");
        machine.install("htop", "Exec=htop\nTerminal=true");
        machine.install("org.gnome.Terminal", "Exec=gnome-terminal");
        machine.install("org.gnome.Nautilus", "Exec=nautilus --new-window %U");
        machine.install("org.kde.konsole", "Exec=konsole");
        machine.install("org.mozilla.Thunderbird", "Exec=/usr/bin/flatpak run org.mozilla.Thunderbird");
        machine.install("spotify_spotify", "Exec=/snap/bin/spotify");
    }

    LinuxApplicationCatalog make() { return machine.catalog(std::make_unique<FakeEvents>(events)); }

    FakeMachine machine;
    std::shared_ptr<FakeEvents::Record> events = std::make_shared<FakeEvents::Record>();
};

TEST_F(LinuxApplicationCatalogTest, descriptorTellsAllOfTheApplication) {
    machine.run(100, 1, 5'000'000, "/usr/lib/firefox/firefox",
                machine.managed("app-gnome-firefox-100.scope"));
    auto catalog = make();
    const ApplicationDescriptor expected{.bundlePath = machine.desktopFile("firefox"),
                                         .bundleID = "firefox",
                                         .name = "firefox",
                                         .pid = 100,
                                         .processStart = 5'000'000};
    EXPECT_THAT(catalog.snapshot(), ElementsAre(expected));
}

TEST_F(LinuxApplicationCatalogTest, desktopWithAServiceManager) {
    const std::string tab = "vte-spawn-0b8a1a2c-93d4-4f5e-8a6b-7c8d9e0f1a2b.scope";
    machine.run(50, 1, 10, "/usr/lib/systemd/systemd",
                "/user.slice/user-1000.slice/user@1000.service/init.scope");
    machine.run(60, 50, 20, "/usr/bin/gnome-shell", machine.managed("gnome-shell.service"));
    // The launcher's fork is younger than a helper that got a lower pid after the numbers wrapped round.
    machine.run(900, 60, 100, "/usr/lib/firefox/firefox", machine.managed("app-gnome-firefox-900.scope"));
    machine.run(300, 900, 110, "/usr/lib/firefox/firefox", machine.managed("app-gnome-firefox-900.scope"));
    // A helper that outlived its parent is outside as well, but not the oldest.
    machine.run(310, 1, 120, "/usr/lib/firefox/crash", machine.managed("app-gnome-firefox-900.scope"));
    // A terminal's tabs have units of their own in the application's slice.
    machine.run(400, 50, 130, "/usr/libexec/gnome-terminal-server",
                machine.managed("app-org.gnome.Terminal.slice/gnome-terminal-server.service"));
    machine.run(410, 400, 140, "/usr/bin/bash", machine.managed("app-org.gnome.Terminal.slice/" + tab));
    machine.run(420, 410, 150, "/usr/lib/firefox/firefox",
                machine.managed("app-org.gnome.Terminal.slice/" + tab));
    // Started by the message bus: in a unit of its own, or with all others in the bus's.
    machine.run(500, 50, 160, "/usr/bin/nautilus", machine.managed("dbus-:1.2-org.gnome.Nautilus@0.service"));
    machine.run(510, 50, 170, "/usr/bin/konsole", machine.managed("dbus.service"));
    // Sandboxes.
    machine.run(600, 60, 180, "/usr/bin/bwrap",
                machine.managed("app-flatpak-org.mozilla.Thunderbird-600.scope"));
    machine.run(610, 600, 190, "/app/bin/thunderbird",
                machine.managed("app-flatpak-org.mozilla.Thunderbird-600.scope"));
    machine.run(700, 60, 200, "/snap/spotify/60/spotify",
                machine.managed("snap.spotify.spotify-0b8a1a2c-93d4-4f5e-8a6b-7c8d9e0f1a2b.scope"));
    // None of these is an application of the user's.
    machine.run(800, 50, 210, "/usr/bin/foot", "/system.slice/app-foot-1.scope");
    machine.run(810, 60, 220, "/usr/bin/foot", machine.managed("app-foot-810.scope"), 0);
    machine.run(820, 50, 230, "/usr/bin/daemon", machine.managed("app-org.example.Daemon@autostart.service"));
    auto catalog = make();
    EXPECT_THAT(listed(catalog),
                ElementsAre("firefox@900", "org.gnome.Nautilus@500", "org.gnome.Terminal@400",
                            "org.kde.konsole@510", "org.mozilla.Thunderbird@600", "spotify_spotify@700"));
}

TEST_F(LinuxApplicationCatalogTest, sessionWithoutApplicationUnits) {
    for (const std::string path : {"/user.slice/user-1000.slice/session-2.scope", "/", "/2"}) {
        machine.rows.clear();
        machine.run(50, 1, 10, "/usr/bin/sway", path);
        machine.run(60, 50, 20, "/usr/bin/foot", path);
        machine.run(70, 60, 30, "/usr/bin/zsh", path);
        machine.run(80, 70, 40, "/usr/bin/htop", path);
        machine.run(90, 70, 50, "/usr/lib/firefox/firefox", path); // started in the terminal
        machine.run(91, 90, 60, "/usr/lib/firefox/forkserver", path);
        machine.run(92, 91, 70, "/usr/lib/firefox/firefox", path); // below itself, a helper between
        machine.run(93, 90, 80, "/usr/bin/konsole", path);         // an application started by another
        machine.run(94, 70, 90, "/usr/bin/python3.11", path);
        machine.run(95, 70, 100, "", path); // unreadable
        machine.run(96, 70, 110, "/usr/bin/foot", path, 1001);
        machine.run(30, 92, 15, "/usr/lib/firefox/firefox", path); // older than its parent: a reused pid
        auto catalog = make();
        EXPECT_THAT(listed(catalog), ElementsAre("firefox@30", "firefox@90", "foot@60", "org.kde.konsole@93"))
            << path;
    }
}

TEST_F(LinuxApplicationCatalogTest, parentsInACircleStillGiveAMainProcess) {
    machine.run(10, 11, 5, "/usr/bin/konsole", machine.managed("app-org.kde.konsole-10.scope"));
    machine.run(11, 10, 6, "/usr/bin/bash", machine.managed("app-org.kde.konsole-10.scope"));
    machine.run(12, 13, 7, "/usr/bin/foot", "/");
    machine.run(13, 12, 7, "/usr/bin/sh", "/");
    auto catalog = make();
    EXPECT_THAT(listed(catalog), ElementsAre("foot@12", "org.kde.konsole@10"));
}

TEST_F(LinuxApplicationCatalogTest, listsOnceAMinuteAndReplacesAll) {
    machine.run(60, 1, 20, "/usr/bin/foot", "/");
    auto catalog = make();
    EXPECT_EQ(machine.listings, 0) << "nothing before it is asked for";
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
    machine.rows.clear();
    machine.run(61, 1, 30, "/usr/bin/konsole", "/");
    machine.clock.advance(59.9);
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
    EXPECT_EQ(machine.listings, 1);
    machine.clock.advance(0.1);
    EXPECT_THAT(listed(catalog), ElementsAre("org.kde.konsole@61"));
    EXPECT_EQ(events->calls, 2) << "a lost connection is looked after with each listing";

    machine.rows.clear();
    machine.clock.advance(-86'400); // the clock is set back by a day
    EXPECT_THAT(listed(catalog), IsEmpty());
}

TEST_F(LinuxApplicationCatalogTest, aTableThatCannotBeReadLosesNothing) {
    machine.run(60, 1, 20, "/usr/bin/foot", machine.managed("app-foot-60.scope"));
    auto catalog = make();
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
    machine.tableFails = true;
    machine.clock.advance(60);
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
    events->handlers.settled("app-foot-60.scope");
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
}

TEST_F(LinuxApplicationCatalogTest, processThatChangesUnderTheListing) {
    machine.run(60, 1, 20, "/usr/bin/foot", machine.managed("app-foot-60.scope"));
    machine.run(61, 1, 30, "/usr/bin/konsole", machine.managed("app-org.kde.konsole-61.scope"));
    machine.run(62, 1, 40, "/usr/lib/firefox/firefox", machine.managed("app-firefox-62.scope"));
    machine.exited.insert(60);
    machine.reused[61] = {.start = 99, .uid = FakeMachine::uid};
    machine.reused[62] = {.start = 40, .uid = 0};
    auto catalog = make();
    const auto list = catalog.snapshot();
    ASSERT_EQ(list.size(), 1u) << "a pid that is another process by now is nobody's application";
    EXPECT_EQ(list[0].bundleID, "foot");
    EXPECT_FALSE(list[0].processStart) << "not known any more";
}

TEST_F(LinuxApplicationCatalogTest, launchesAndExitsCountBetweenListings) {
    auto catalog = make();
    EXPECT_THAT(listed(catalog), IsEmpty());

    // Installed and launched within the minute, escaped, and two launches in one walk of the table.
    machine.install("new-app", "Exec=new-app");
    std::filesystem::last_write_time(machine.folder.path("share/applications"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    machine.run(70, 1, 30, "/usr/bin/new-app", machine.managed("app-new\\x2dapp-70.scope"));
    machine.run(71, 1, 31, "/usr/bin/foot", machine.managed("app-foot-71.scope"));
    machine.run(72, 1, 32, "/usr/bin/konsole", machine.managed("app-org.kde.konsole-72.scope"));
    events->handlers.settled("app-new\\x2dapp-70.scope");
    events->handlers.settled("app-foot-71.scope");
    EXPECT_THAT(listed(catalog), ElementsAre("foot@71", "new-app@70")) << "konsole's event has not come";
    EXPECT_EQ(machine.listings, 2);

    events->handlers.removed("app-foot-71.scope");
    EXPECT_THAT(listed(catalog), ElementsAre("new-app@70"));
    events->handlers.removed("app-foot-71.scope");
    events->handlers.removed("");
    EXPECT_THAT(listed(catalog), ElementsAre("new-app@70"));
    EXPECT_EQ(machine.listings, 2) << "an exit needs no look at the table";
}

TEST_F(LinuxApplicationCatalogTest, eventsThatSayLessThanTheySeem) {
    machine.run(60, 1, 20, "/usr/bin/foot", "/user.slice/session-2.scope");
    auto catalog = make();
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
    for (const char* unit : {"run-r1.scope", "libpod-1.scope", "dev-sda.device", "app-foot-1.timer", ""}) {
        events->handlers.settled(unit);
    }
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
    EXPECT_EQ(machine.listings, 1) << "none of these can be an application's";

    events->handlers.settled("app-foot-7.scope"); // gone before anybody looked
    events->handlers.removed("app-foot-7.scope");
    events->handlers.settled("app-htop-8.scope"); // never had a process
    events->handlers.removed("session-3.scope");
    EXPECT_THAT(listed(catalog), ElementsAre("foot@60"));
}

TEST_F(LinuxApplicationCatalogTest, serviceThatStartsAnewHasANewMainProcess) {
    const std::string path = machine.managed("app-org.gnome.Terminal.slice/gnome-terminal-server.service");
    machine.run(60, 1, 20, "/usr/libexec/gnome-terminal-server", path);
    auto catalog = make();
    EXPECT_THAT(listed(catalog), ElementsAre("org.gnome.Terminal@60"));
    machine.rows.clear();
    machine.run(90, 1, 50, "/usr/libexec/gnome-terminal-server", path);
    events->handlers.settled("gnome-terminal-server.service");
    EXPECT_THAT(listed(catalog), ElementsAre("org.gnome.Terminal@90"));
    machine.rows.clear();
    events->handlers.settled("gnome-terminal-server.service"); // the job was a stop
    EXPECT_THAT(listed(catalog), IsEmpty());
}

} // namespace
} // namespace varnet::platform
