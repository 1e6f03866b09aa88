#include "VarnetApp/Platform/linux/UserManagerEvents.h"
#include "tests/VarnetApp/Platform/FakeMachine.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace varnet::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString managerInterface = "org.freedesktop.systemd1.Manager";
const QString managerPath = "/org/freedesktop/systemd1";
const QVariant unitPath = QVariant::fromValue(QDBusObjectPath(managerPath + "/x"));

/// The user's service manager, as far as subscribing and signalling goes.
struct FakeManager : BusPeer {
    explicit FakeManager(const QString& address) : BusPeer(address, "org.freedesktop.systemd1", managerPath) {
        answer("Subscribe", QVariantList());
        appear();
    }
    bool subscribed() const {
        return eventually([this] { return !calls("Subscribe").isEmpty(); });
    }
    void emitUnitNew(const QString& unit) { emitSignal(managerInterface, "UnitNew", {unit, unitPath}); }
    void emitJobRemoved(const QString& unit, const QString& result) {
        emitSignal(managerInterface, "JobRemoved", {1u, unitPath, unit, result});
    }
    void emitUnitRemoved(const QString& unit) {
        emitSignal(managerInterface, "UnitRemoved", {unit, unitPath});
    }
};

class UserManagerEventsTest : public testing::Test {
protected:
    UserManagerEventsTest() { application(); }

    void SetUp() override {
        machine.install("foot", "Exec=foot");
        bus = std::make_unique<PrivateBus>(folder);
        ASSERT_TRUE(bus->running());
    }
    std::string scope(std::int32_t pid) { return "app-foot-" + std::to_string(pid) + ".scope"; }
    void launch(std::int32_t pid) {
        machine.run(pid, 1, static_cast<std::uint64_t>(pid), "/usr/bin/foot", machine.managed(scope(pid)));
    }
    QString unit(std::int32_t pid) { return QString::fromStdString(scope(pid)); }

    TemporaryFolder folder;
    FakeMachine machine;
    std::unique_ptr<PrivateBus> bus;
};

TEST_F(UserManagerEventsTest, launchAndExitArriveBetweenTwoListings) {
    FakeManager manager(bus->address());
    auto catalog = machine.catalog(std::make_unique<UserManagerEvents>(bus->address()));
    EXPECT_THAT(listed(catalog), IsEmpty());
    ASSERT_TRUE(manager.subscribed());

    launch(70);
    manager.emitUnitNew(unit(70));
    manager.emitJobRemoved(unit(71), "failed");
    manager.emitJobRemoved(unit(70), "done");
    ASSERT_TRUE(eventually([&] { return !listed(catalog).empty(); }));
    EXPECT_THAT(listed(catalog), ElementsAre("foot@70"));
    EXPECT_EQ(machine.listings, 2);

    machine.rows.clear();
    manager.emitUnitRemoved(unit(70));
    ASSERT_TRUE(eventually([&] { return listed(catalog).empty(); }));
    EXPECT_EQ(machine.listings, 2);
}

TEST_F(UserManagerEventsTest, managerThatComesLateOrAnewIsSubscribedTo) {
    auto catalog = machine.catalog(std::make_unique<UserManagerEvents>(bus->address()));
    EXPECT_THAT(listed(catalog), IsEmpty());
    for (const std::int32_t pid : {70, 71}) {
        FakeManager manager(bus->address());
        ASSERT_TRUE(manager.subscribed()) << pid;
        launch(pid);
        manager.emitJobRemoved(unit(pid), "done");
        ASSERT_TRUE(eventually([&] { return listed(catalog).contains("foot@" + std::to_string(pid)); }))
            << pid;
    }
    EXPECT_EQ(machine.listings, 3) << "one for each launch, beside the first";
}

TEST_F(UserManagerEventsTest, busThatIsLostIsFoundAgainWithTheNextListing) {
    auto manager = std::make_unique<FakeManager>(bus->address());
    auto catalog = machine.catalog(std::make_unique<UserManagerEvents>(bus->address()));
    EXPECT_THAT(listed(catalog), IsEmpty());
    manager.reset();
    bus->stop();
    launch(70);
    machine.clock.advance(60);
    EXPECT_THAT(listed(catalog), ElementsAre("foot@70")) << "the listing needs no bus";

    bus = std::make_unique<PrivateBus>(folder);
    ASSERT_TRUE(bus->running());
    manager = std::make_unique<FakeManager>(bus->address());
    ASSERT_TRUE(eventually([&] {
        machine.clock.advance(60);
        catalog.snapshot();
        return !manager->calls("Subscribe").isEmpty();
    }));
    machine.rows.clear();
    manager->emitUnitRemoved(unit(70));
    ASSERT_TRUE(eventually([&] { return listed(catalog).empty(); }));
}

TEST_F(UserManagerEventsTest, otherClientsOfTheBusAreNotBelieved) {
    FakeManager manager(bus->address());
    launch(70);
    auto catalog = machine.catalog(std::make_unique<UserManagerEvents>(bus->address()));
    EXPECT_THAT(listed(catalog), ElementsAre("foot@70"));
    ASSERT_TRUE(manager.subscribed());

    BusPeer stranger(bus->address(), "test.stranger", managerPath);
    stranger.emitSignal(managerInterface, "UnitRemoved", {unit(70), unitPath});
    // The manager's own signal behind it shows that the forged one has been through.
    launch(71);
    manager.emitJobRemoved(unit(71), "done");
    ASSERT_TRUE(eventually([&] { return listed(catalog).contains("foot@71"); }));
    EXPECT_THAT(listed(catalog), ElementsAre("foot@70", "foot@71"));
}

TEST(UserManagerEventsAbsence, noBusCostsNothingButTheEvents) {
    application();
    FakeMachine machine;
    machine.install("foot", "Exec=foot");
    machine.run(70, 1, 1, "/usr/bin/foot", machine.managed("app-foot-70.scope"));
    auto catalog =
        machine.catalog(std::make_unique<UserManagerEvents>("unix:path=/nonexistent/varnet-test-bus"));
    EXPECT_THAT(listed(catalog), ElementsAre("foot@70"));
}

} // namespace
} // namespace varnet::platform
