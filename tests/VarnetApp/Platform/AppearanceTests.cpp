#include "VarnetApp/Platform/linux/PortalAppearance.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <QDBusVariant>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace varnet::platform {
namespace {

const QString interface = "org.freedesktop.portal.Settings";

QVariant boxed(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

/// A portal with the two settings that matter, and no others.
struct Portal : BusPeer {
    /// @param reading the method it knows: "ReadOne", or "Read" in the portals before
    Portal(const QString& address, const QString& reading, const QVariant& scheme, const QVariant& animations)
        : BusPeer(address, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop") {
        answer(reading, [=](const QDBusMessage& call) {
            const QVariant value = call.arguments().at(1) == "color-scheme" ? scheme : animations;
            if (!value.isValid()) {
                return call.createErrorReply("org.freedesktop.portal.Error.NotFound", "no such setting");
            }
            return call.createReply(reading == "Read" ? boxed(boxed(value)) : boxed(value));
        });
        appear();
    }
    void set(const QString& space, const QString& key, const QVariant& value) {
        emitSignal(interface, "SettingChanged", {space, key, boxed(value)});
    }
};

using AppearanceTest = BusTest;

TEST_F(AppearanceTest, whatThePortalSaysAtTheStart) {
    struct Row {
        const char* name;
        QString reading;
        QVariant scheme;
        QVariant animations;
        std::optional<bool> dark;
        std::optional<bool> still;
    };
    const Row rows[] = {
        {"dark, still", "ReadOne", 1u, false, true, true},
        {"light, moving", "ReadOne", 2u, true, false, false},
        {"old portal wraps twice", "Read", 1u, false, true, true},
        {"no preference", "ReadOne", 0u, true, std::nullopt, false},
        {"a scheme of the future", "ReadOne", 3u, true, std::nullopt, false},
        {"a scheme of another type", "ReadOne", "dark", false, std::nullopt, true},
        {"desktop without animations setting", "ReadOne", 2u, QVariant(), false, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Portal portal(bus.address(), row.reading, row.scheme, row.animations);
        PortalAppearance appearance(bus.address());
        EXPECT_EQ(appearance.prefersDark(), std::nullopt) << "nothing waits for the portal";
        EXPECT_TRUE(eventually([&] {
            return appearance.prefersDark() == row.dark && appearance.reducedMotion() == row.still &&
                   portal.calls(row.reading).size() == 2;
        }));
    }
}

TEST_F(AppearanceTest, changesAreToldOnce) {
    Portal portal(bus.address(), "ReadOne", 2u, true);
    PortalAppearance appearance(bus.address());
    ASSERT_TRUE(eventually([&] { return appearance.prefersDark() && appearance.reducedMotion(); }));
    int changes = 0;
    appearance.listen({.changed = [&] { ++changes; }});
    portal.set("org.freedesktop.appearance", "color-scheme", 2u);
    portal.set("org.gnome.desktop.interface", "color-scheme", "prefer-dark");
    portal.set("org.gnome.desktop.interface", "font-name", "Sans 11");
    portal.set("org.freedesktop.appearance", "color-scheme", 1u);
    portal.set("org.gnome.desktop.interface", "enable-animations", false);
    ASSERT_TRUE(eventually([&] { return appearance.reducedMotion() == true; }));
    EXPECT_EQ(appearance.prefersDark(), true);
    EXPECT_EQ(changes, 2);
}

TEST_F(AppearanceTest, portalThatComesLateOrAnewIsAsked) {
    PortalAppearance appearance(bus.address());
    auto portal = std::make_unique<Portal>(bus.address(), "ReadOne", 1u, true);
    EXPECT_TRUE(eventually([&] { return appearance.prefersDark() == true; }));
    portal.reset();
    portal = std::make_unique<Portal>(bus.address(), "ReadOne", 2u, true);
    EXPECT_TRUE(eventually([&] { return appearance.prefersDark() == false; }));
}

TEST_F(AppearanceTest, withoutABusNothingIsKnown) {
    PortalAppearance appearance{QString()};
    EXPECT_EQ(appearance.prefersDark(), std::nullopt);
    EXPECT_EQ(appearance.reducedMotion(), std::nullopt);
}

} // namespace
} // namespace varnet::platform
