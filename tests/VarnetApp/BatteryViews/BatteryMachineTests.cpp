#include "VarnetApp/BatteryViews/BatteryRows.h"
#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetApp/Platform/BatteryPower.h"
#include "probes/fake/FakeProbes.h"
#include "tests/VarnetApp/Platform/BatteryMachines.h"
#include "tests/fakes/FakeClock.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <algorithm>

namespace varnet {
namespace {

const QLocale english(QLocale::English, QLocale::UnitedStates);

/// One pass on a machine of these files.
std::shared_ptr<const BatteryDashboard> dashboardOf(const BatteryMachine& machine) {
    const TemporaryFolder sys;
    const TemporaryFolder home;
    machine.write(sys);
    FakeProbes probes;
    FakeClock clock{BatteryMachine::now};
    const auto reader = platform::makeBatteryReader(sys.path().string());
    MonitorEngine engine({.probes = probes,
                          .clock = clock,
                          .storage = home.path() / "state",
                          .home = home.path(),
                          .battery = reader.get()});
    return engine.sample({}, Thermal::nominal, true)->battery;
}

/// From the files of a machine through reader and engine to what stands on screen.
TEST(BatteryMachines, arriveOnThePageAsTheyAre) {
    struct Row {
        const char* machine;
        const char* line;
        const char* charge;
        const char* time;
        const char* power;
        const char* figures; ///< health, cycles, temperature, capacity, condition, adapter
        const char* summary; ///< on the overview
    };
    const char* const nothing = "— | — | — | — | — | —";
    const char* const noBattery = "There is none in this machine.";
    const char* const silent = "The battery isn’t answering. It is asked again every few seconds.";
    const std::vector<BatteryMachine> machines = batteryMachines();
    for (const Row& row : {
             Row{"laptop that counts energy", "On battery", "60%", "2 hr 0 min", "12.0 W",
                 "80% | 212 | — | 3,509 mAh | — | —", "2 hr 0 min · 12.0 W"},
             Row{"a mouse beside it", "On battery", "60%", "2 hr 0 min", "12.0 W",
                 "80% | 212 | — | 3,509 mAh | — | —", "2 hr 0 min · 12.0 W"},
             Row{"driver that does not measure power says 0", "On battery", "60%", "Estimating…", "—",
                 "80% | 212 | — | 3,509 mAh | — | —", "Estimating…"},
             Row{"held below full: not charging", "Plugged in", "60%", "Plugged in", "0.0 W",
                 "80% | 212 | — | 3,509 mAh | — | —", "Plugged in"},
             Row{"laptop that counts charge", "Charging · Low power mode", "67%", "1 hr 20 min", "12.0 W",
                 "90% | — | 31.2 °C | 4,500 mAh | Normal | 65.0 W", "Full in 1 hr 20 min"},
             Row{"two batteries, one resting", "On battery", "50%", "2 hr 0 min", "10.0 W",
                 "80% | 300 | — | 4,000 mAh | — | —", "2 hr 0 min · 10.0 W"},
             Row{"only a percentage", "Fully charged", "97%", "Fully charged", "—", nothing, "Fully charged"},
             Row{"a machine that publishes nonsense", "Plugged in", "55%", "Plugged in", "—",
                 "— | — | — | — | Service | —", "Plugged in"},
             Row{"desktop", noBattery, "—", "—", "—", nothing, "No battery"},
             Row{"desktop with a mouse and a supply for hard times", noBattery, "—", "—", "—", nothing,
                 "No battery"},
             Row{"virtual machine with no such class", noBattery, "—", "—", "—", nothing, "No battery"},
             Row{"a battery of which nothing can be read", silent, "—", "—", "—", nothing, "No reading"},
             Row{"nothing can be listed", silent, "—", "—", "—", nothing, "No reading"},
         }) {
        SCOPED_TRACE(row.machine);
        const auto machine = std::ranges::find_if(
            machines, [&](const BatteryMachine& one) { return std::string(one.name) == row.machine; });
        ASSERT_NE(machine, machines.end());
        const auto held = dashboardOf(*machine);
        const BatteryDashboard* const battery = held.get();
        ASSERT_NE(battery, nullptr);
        const BatteryReading* const reading = BatteryTexts::readingOf(battery);
        EXPECT_EQ(BatteryTexts::line(battery), row.line);
        EXPECT_EQ(BatteryDisplay::percent(reading ? reading->charge : std::nullopt, english), row.charge);
        EXPECT_EQ(BatteryTexts::time(battery).figure, row.time);
        EXPECT_EQ(BatteryTexts::power(battery, english), row.power);
        QStringList figures;
        for (const BatteryFigure& figure : batteryFigures(battery, english))
            figures.append(figure.figure);
        EXPECT_EQ(figures.join(" | "), row.figures);
        EXPECT_EQ(BatteryTexts::summary(battery, english), row.summary);
    }
}

} // namespace
} // namespace varnet
