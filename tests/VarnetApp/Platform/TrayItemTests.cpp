#include "VarnetApp/Platform/linux/StatusNotifierItem.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace varnet::platform {
namespace {

using testing::ElementsAre;

const QString watcherName = "org.kde.StatusNotifierWatcher";
const QString itemInterface = "org.kde.StatusNotifierItem";
const QString menuInterface = "com.canonical.dbusmenu";

/// The desktop's side: the watcher, and a host that reads what has been entered there.
class Desktop : public BusPeer {
    Q_OBJECT

public:
    Desktop(const QString& address, bool withHost)
        : BusPeer(address, watcherName, "/StatusNotifierWatcher"), host(withHost) {
        answer("RegisterStatusNotifierItem", [this](const QDBusMessage& call) {
            item = call.arguments().at(0).toString();
            return call.createReply();
        });
        answer("Get", [this](const QDBusMessage& call) {
            return call.createReply(QVariant::fromValue(QDBusVariant(host)));
        });
        for (const QString& interface :
             {itemInterface, menuInterface, QString("org.freedesktop.DBus.Properties")}) {
            bus().connect({}, {}, interface, {}, this, SLOT(onSignal(QDBusMessage)));
        }
        appear();
    }
    void setHost(bool there) {
        host = there;
        emitSignal(watcherName, there ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered",
                   {});
    }
    QDBusMessage ask(const QString& path, const QString& interface, const QString& member,
                     const QVariantList& arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(item, path, interface, member);
        call.setArguments(arguments);
        QDBusPendingCall pending = bus().asyncCall(call);
        EXPECT_TRUE(eventually([&] { return pending.isFinished(); })) << member.toStdString();
        return pending.reply();
    }
    QDBusMessage askItem(const QString& member, const QVariantList& arguments) {
        return ask("/StatusNotifierItem", itemInterface, member, arguments);
    }
    QDBusMessage askMenu(const QString& member, const QVariantList& arguments) {
        return ask("/MenuBar", menuInterface, member, arguments);
    }
    QVariantMap properties() {
        const QDBusMessage reply =
            ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll", {itemInterface});
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }
    TrayMenuNode layout() {
        return qdbus_cast<TrayMenuNode>(askMenu("GetLayout", {0, -1, QStringList()}).arguments().value(1));
    }

    QString item; ///< who entered last
    bool host;
    std::vector<std::string> signalled;

private slots:
    void onSignal(const QDBusMessage& message) { signalled.push_back(message.member().toStdString()); }
};

class TrayItemTest : public BusTest {
protected:
    void enter(Desktop& desktop) {
        tray.listen({.activated = [this](int x, int y) { heard.push_back(std::to_string(x + y)); },
                     .menuChosen = [this](int id) { heard.push_back("menu " + std::to_string(id)); },
                     .activationToken = [this](const std::string& token) { heard.push_back(token); },
                     .hostedChanged = [this](bool hosted) { heard.push_back(hosted ? "hosted" : "alone"); }});
        ASSERT_TRUE(eventually([&] { return tray.hosted() == desktop.host && !desktop.item.isEmpty(); }));
        heard.clear();
    }

    StatusNotifierItem tray{bus.address()};
    std::vector<std::string> heard;
};

TEST_F(TrayItemTest, traysComeAndGo) {
    tray.listen(
        {.activated = {}, .menuChosen = {}, .activationToken = {}, .hostedChanged = [this](bool hosted) {
             heard.push_back(hosted ? "hosted" : "alone");
         }});
    EXPECT_FALSE(tray.hosted());
    std::optional<Desktop> desktop(std::in_place, bus.address(), false);
    ASSERT_TRUE(eventually([&] { return desktop->calls("Get").size() == 1; }));
    EXPECT_TRUE(desktop->item.startsWith(':')) << "entered by the name that nobody else can take";
    EXPECT_FALSE(tray.hosted()) << "a list that nobody draws";
    desktop->setHost(true);
    ASSERT_TRUE(eventually([&] { return tray.hosted(); }));
    desktop->setHost(false);
    ASSERT_TRUE(eventually([&] { return !tray.hosted(); }));
    desktop->setHost(true);
    desktop->emitSignal(watcherName, "StatusNotifierHostUnregistered", {}); // one of two
    ASSERT_TRUE(eventually([&] { return tray.hosted(); }));

    desktop.reset();
    ASSERT_TRUE(eventually([&] { return !tray.hosted(); }));
    desktop.emplace(bus.address(), true);
    ASSERT_TRUE(eventually([&] { return tray.hosted(); }));
    EXPECT_EQ(desktop->calls("RegisterStatusNotifierItem").size(), 1);
    EXPECT_THAT(heard, ElementsAre("hosted", "alone", "hosted", "alone", "hosted"));
}

TEST_F(TrayItemTest, watcherThatRefusesHostsNothing) {
    BusPeer refusing(bus.address(), watcherName, "/StatusNotifierWatcher");
    refusing.answer("Get", {QVariant::fromValue(QDBusVariant(true))});
    refusing.appear();
    tray.listen({});
    ASSERT_TRUE(eventually([&] { return refusing.calls("RegisterStatusNotifierItem").size() == 1; }));
    refusing.emitSignal(watcherName, "StatusNotifierHostRegistered", {});
    BusPeer later(bus.address(), "test.later", "/");
    EXPECT_EQ(refusing.calls("Get").size(), 0);
    EXPECT_FALSE(tray.hosted());
}

TEST_F(TrayItemTest, hostReadsAllThatWasSet) {
    tray.setTitle("Varnet?");
    tray.setIcon({{2, 1, {0x80112233, 0xff445566}},
                  {2, 2, {1, 2, 3}},                         // too few pixels
                  {-1, -1, {1}},                             // no size
                  {513, 1, std::vector<std::uint32_t>(513)}, // larger than any tray
                  {1, 2, {0, 0xffffffff}}});
    tray.setToolTip("Hot", "a < b & c");
    tray.setLabel("12 %", "100 %");
    tray.setAccessibleDescription("Varnet? 2 findings");
    Desktop desktop(bus.address(), true);
    enter(desktop);

    const QVariantMap properties = desktop.properties();
    const TrayPixmaps icon{{2, 1, QByteArray::fromHex("80112233ff445566")},
                           {1, 2, QByteArray::fromHex("00000000ffffffff")}};
    EXPECT_EQ(qdbus_cast<TrayPixmaps>(properties["IconPixmap"]), icon);
    EXPECT_EQ(qdbus_cast<TrayToolTip>(properties["ToolTip"]),
              (TrayToolTip{{}, {}, "Hot", "a &lt; b &amp; c"}));
    // Hosts drop a property whose type is not the one they know.
    const std::map<QString, QVariant> plain{{"Category", "SystemServices"},
                                            {"Id", "com.varnet.Varnet"},
                                            {"Title", "Varnet?"},
                                            {"Status", "Active"},
                                            {"WindowId", 0},
                                            {"IconName", ""},
                                            {"IconThemePath", ""},
                                            {"IconAccessibleDesc", "Varnet? 2 findings"},
                                            {"ItemIsMenu", false},
                                            {"Menu", QVariant::fromValue(QDBusObjectPath("/MenuBar"))},
                                            {"XAyatanaLabel", "12 %"},
                                            {"XAyatanaLabelGuide", "100 %"},
                                            {"XAyatanaOrderingIndex", 0u}};
    for (const auto& [name, value] : plain) {
        EXPECT_EQ(properties[name].metaType(), value.metaType()) << name.toStdString();
        EXPECT_EQ(properties[name], value) << name.toStdString();
    }
    const std::map<QString, QString> signatures{{"IconPixmap", "a(iiay)"},
                                                {"OverlayIconPixmap", "a(iiay)"},
                                                {"AttentionIconPixmap", "a(iiay)"},
                                                {"ToolTip", "(sa(iiay)ss)"}};
    for (const auto& [name, signature] : signatures) {
        EXPECT_EQ(properties[name].value<QDBusArgument>().currentSignature(), signature)
            << name.toStdString();
    }
}

TEST_F(TrayItemTest, onlyChangesAreSent) {
    Desktop desktop(bus.address(), true);
    enter(desktop);
    for (int twice = 0; twice < 2; ++twice) {
        tray.setTitle("T");
        tray.setIcon({{1, 1, {7}}});
        tray.setToolTip("a", "b");
        tray.setLabel("1 %", "100 %");
        tray.setAccessibleDescription("d");
        tray.setMenu({{.id = 1, .label = "Open overview"}});
    }
    tray.setLabel("2 %", "100 %");
    ASSERT_TRUE(eventually([&] { return desktop.signalled.size() >= 7; }));
    EXPECT_THAT(desktop.signalled, ElementsAre("NewTitle", "NewIcon", "NewToolTip", "XAyatanaNewLabel",
                                               "PropertiesChanged", "LayoutUpdated", "XAyatanaNewLabel"));
}

TEST_F(TrayItemTest, clicksArriveInOrder) {
    Desktop desktop(bus.address(), true);
    enter(desktop);
    desktop.askItem("ProvideXdgActivationToken", {"token"});
    desktop.askItem("Activate", {1, 2});
    desktop.askItem("SecondaryActivate", {2, 2});
    desktop.askItem("ContextMenu", {2, 3});
    desktop.askItem("Scroll", {120, "vertical"});
    ASSERT_TRUE(eventually([&] { return heard.size() >= 4; }));
    EXPECT_THAT(heard, ElementsAre("token", "3", "4", "5"));
}

TEST_F(TrayItemTest, menuIsReadAndChosenFrom) {
    tray.setMenu({{.id = 1, .label = "Open_overview"},
                  {.id = 2, .label = "", .separator = true},
                  {.id = 3, .label = "Check for Updates", .enabled = false},
                  {.id = 3, .label = "the same id again"},
                  {.id = 0, .label = "the menu's own id"},
                  {.id = 9, .label = "Quit Varnet"}});
    Desktop desktop(bus.address(), true);
    enter(desktop);
    const QDBusMessage reply = desktop.askMenu("GetLayout", {0, -1, QStringList()});
    EXPECT_EQ(reply.signature(), "u(ia{sv}av)");
    const TrayMenuNode root = qdbus_cast<TrayMenuNode>(reply.arguments().value(1));
    EXPECT_EQ(root.properties["children-display"], "submenu");
    ASSERT_EQ(root.children.size(), 4);
    EXPECT_EQ(root.children[0].properties["label"], "Open__overview") << "an underline is no mnemonic";
    EXPECT_EQ(root.children[1].properties["type"], "separator");
    EXPECT_EQ(root.children[2].properties["enabled"], false);
    EXPECT_EQ(root.children[3].id, 9);

    const QDBusMessage group =
        desktop.askMenu("GetGroupProperties", {QVariant::fromValue(QList<int>{9, 77}), QStringList{"label"}});
    EXPECT_EQ(group.signature(), "a(ia{sv})");
    const auto some = qdbus_cast<QList<TrayMenuProperties>>(group.arguments().value(0));
    ASSERT_EQ(some.size(), 1);
    EXPECT_EQ(some[0].properties, (QVariantMap{{"label", "Quit Varnet"}}));
    EXPECT_EQ(desktop.askMenu("GetLayout", {77, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(desktop.askMenu("GetProperty", {9, "none"}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(desktop.askMenu("AboutToShow", {0}).arguments(), QVariantList{false});

    const auto click = [&](int id, const QString& event = "clicked") {
        desktop.askMenu("Event", {id, event, QVariant::fromValue(QDBusVariant(0)), 0u});
    };
    click(3); // not enabled
    click(2); // no entry
    click(77);
    click(0);
    click(9, "hovered");
    click(9);
    const QDBusVariant data(0);
    const QDBusMessage events = desktop.askMenu(
        "EventGroup", {QVariant::fromValue(QList<TrayMenuEvent>{
                          {77, "clicked", data, 0}, {0, "opened", data, 0}, {1, "clicked", data, 0}})});
    EXPECT_EQ(qdbus_cast<QList<int>>(events.arguments().value(0)), QList<int>{77});
    ASSERT_TRUE(eventually([&] { return heard.size() >= 2; }));
    EXPECT_THAT(heard, ElementsAre("menu 9", "menu 1"));
}

TEST_F(TrayItemTest, clickOnAMenuThatHasChangedChoosesWhatWasSeen) {
    tray.setMenu({{.id = 1, .label = "Settings"}, {.id = 2, .label = "Quit Varnet"}});
    Desktop desktop(bus.address(), true);
    enter(desktop);
    const auto seen = desktop.layout();
    tray.setMenu({{.id = 2, .label = "Quit Varnet"}, {.id = 3, .label = "Open overview"}});
    for (const TrayMenuNode& entry : seen.children) {
        desktop.askMenu("Event", {entry.id, "clicked", QVariant::fromValue(QDBusVariant(0)), 0u});
    }
    ASSERT_TRUE(eventually([&] { return !heard.empty(); }));
    EXPECT_THAT(heard, ElementsAre("menu 2"));
}

TEST_F(TrayItemTest, withoutABusThereIsNoTray) {
    StatusNotifierItem busless{QString()};
    busless.setMenu({{.id = 1, .label = "x"}});
    busless.setIcon({{1, 1, {7}}});
    busless.listen({});
    EXPECT_FALSE(busless.hosted());
}

} // namespace
} // namespace varnet::platform

#include "TrayItemTests.moc"
