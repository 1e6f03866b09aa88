#include "VarnetApp/Platform/linux/ApplicationUnit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnet::platform {
namespace {

using Ids = std::vector<std::string>;

TEST(ApplicationUnit, namesLeadToTheirIDsTheLikeliestFirst) {
    struct Row {
        const char* oddity;
        std::string unit;
        Ids ids;
    };
    const std::string uuid = "0b8a1a2c-93d4-4f5e-8a6b-7c8d9e0f1a2b";
    const std::vector<Row> rows = {
        {"launcher before the id", "app-gnome-firefox-3127.scope", {"firefox", "gnome-firefox"}},
        {"no launcher", "app-org.kde.konsole-5523.scope", {"org.kde.konsole"}},
        {"template service", "app-org.kde.dolphin@2f3c9a.service", {"org.kde.dolphin"}},
        {"autostarted", "app-org.kde.kalarm@autostart.service", {"org.kde.kalarm"}},
        {"at sign in a scope", "app-gnome-gimp@7.scope", {"gimp", "gnome-gimp"}},
        {"empty random part", "app-gimp@.service", {"gimp"}},
        {"escaped dash", "app-firefox\\x2desr-99.scope", {"firefox-esr"}},
        {"escaped dash behind a launcher",
         "app-gnome-org.gnome.Evolution\\x2dalarm-12.scope",
         {"org.gnome.Evolution-alarm", "gnome-org.gnome.Evolution-alarm"}},
        {"bare dashes in the id",
         "app-gnome-code-url-handler-7.scope",
         {"code-url-handler", "gnome-code-url-handler"}},
        {"flatpak",
         "app-flatpak-org.mozilla.firefox-1234.scope",
         {"org.mozilla.firefox", "flatpak-org.mozilla.firefox"}},
        {"random part with dashes", "app-foot-" + uuid + ".scope", {"foot"}},
        {"scope without a random part", "app-firefox.scope", {}},
        {"service without a random part", "app-gnome-gitg.service", {"gitg", "gnome-gitg", "gnome"}},
        {"slice of a terminal", "app-org.gnome.Terminal.slice", {"org.gnome.Terminal"}},
        {"bus activated", "dbus-:1.2-org.gnome.Nautilus@0.service", {"org.gnome.Nautilus"}},
        {"bus activated, escaped", "dbus-:1.33-com.example.My\\x2dApp@12.service", {"com.example.My-App"}},
        {"bus name alone", "dbus-org.freedesktop.login1.service", {}},
        {"bus unit with the at sign too early", "dbus-:1@2-org.x.service", {}},
        {"snap with a dash", "snap.firefox.firefox-" + uuid + ".scope", {"firefox_firefox"}},
        {"snap with a dot", "snap.code-insiders.code." + uuid + ".scope", {"code-insiders_code"}},
        {"snap daemon", "snap.lxd.daemon.service", {}},
        {"snap without a program", "snap.firefox-" + uuid + ".scope", {}},
        {"terminal's tab", "vte-spawn-" + uuid + ".scope", {}},
        {"the folder of all applications", "app.slice", {}},
        {"only the prefix", "app-.scope", {}},
        {"only dashes", "app-----.scope", {"--", "---"}},
        {"another kind of unit", "app-firefox-1.timer", {}},
        {"longer than a unit can be", "app-" + std::string(300, 'a') + "-1.scope", {}},
    };
    for (const Row& row : rows) {
        EXPECT_THAT(applicationIDs(row.unit), testing::ElementsAreArray(row.ids)) << row.oddity;
    }
}

TEST(ApplicationUnit, incompleteEscapesStayAsTheyAre) {
    EXPECT_EQ(unescapeUnitName("a\\x2Db"), "a-b");
    EXPECT_EQ(unescapeUnitName("a\\x2"), "a\\x2");
    EXPECT_EQ(unescapeUnitName("a\\xg0"), "a\\xg0");
    EXPECT_EQ(unescapeUnitName("\\"), "\\");
    EXPECT_EQ(unescapeUnitName("\\\\x41"), "\\A");
}

} // namespace
} // namespace varnet::platform
