#include "probes/linux/FanReadings.h"
#include "probes/linux/ThermalReadings.h"
#include "tests/probes/FixtureKernel.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace varnet::probes {
namespace {

using Files = std::map<std::string, std::string>;

struct FanRow {
    const char* machine;
    Files files; ///< below class/hwmon
    std::int32_t count;
    std::vector<double> speeds = {};
    std::vector<double> maxima = {};
};

std::vector<FanRow> fanRows() {
    Files many;
    for (int fan = 1; fan <= 12; ++fan)
        many["hwmon0/fan" + std::to_string(fan) + "_input"] = std::to_string(1000 + fan);
    Files badTail = many;
    badTail["hwmon0/fan11_input"] = "nonsense";
    const std::string first = "hwmon0/fan1_", second = "hwmon0/fan2_";
    return {
        {"virtual machine with nothing", {}, 0},
        {"fanless: chips that only tell temperatures", {{"hwmon0/temp1_input", "40000"}}, 0},
        {"chips by number, not by name",
         {{"hwmon10/fan1_input", "3"}, {"hwmon2/fan10_input", "2"}, {"hwmon2/fan2_input", "1\n"}},
         3,
         {1, 2, 3},
         {0, 0, 0}},
        {"top speed kept", {{first + "input", "2400"}, {first + "max", "4900"}}, 1, {2400}, {4900}},
        {"top speed unknown", {{first + "input", "2400"}, {first + "max", "0"}}, 1, {2400}, {0}},
        {"top speed absurd", {{first + "input", "2400"}, {first + "max", "20001"}}, 1, {2400}, {0}},
        {"top speed below the speed", {{first + "input", "2400"}, {first + "max", "2399"}}, 1, {2400}, {0}},
        {"a server with twelve fans: the first ten",
         many,
         10,
         {1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 1009, 1010},
         std::vector<double>(10)},
        {"what lies beyond the tenth is not even read", badTail, 10},
        {"the fastest that is believed", {{first + "input", "20000"}}, 1, {20'000}, {0}},
        {"one too fast voids the reading", {{first + "input", "1000"}, {second + "input", "20001"}}, -1},
        {"below zero", {{first + "input", "-1"}}, -1},
        {"no number", {{first + "input", "fast"}}, -1},
        {"nothing in the file", {{first + "input", ""}}, -1},
        {"marked as faulty: no fan",
         {{first + "input", "65535"},
          {first + "fault", "1"},
          {second + "input", "9"},
          {second + "fault", "0"}},
         1,
         {9},
         {0}},
        {"an input that cannot be read", {{first + "input/folder", ""}}, -1},
        {"names that are almost fans",
         {{"hwmon0/fan_input", "1"}, {"hwmon0/fan1_input_x", "1"}, {"hwmonx/fan1_input", "1"}},
         0},
    };
}

TEST(Fans, ofManyMachines) {
    for (const FanRow& row : fanRows()) {
        SCOPED_TRACE(row.machine);
        const FixtureKernel kernel;
        for (const auto& [file, text] : row.files)
            kernel.write("sys/class/hwmon/" + file, text);
        std::array<VNFan, 16> found{};
        EXPECT_EQ(fans(kernel.root().sys, found.data(), 16), row.count);
        for (std::size_t i = 0; i < row.speeds.size(); ++i) {
            EXPECT_EQ(found[i].id, static_cast<std::int32_t>(i));
            EXPECT_EQ(found[i].rpm, row.speeds[i]);
            EXPECT_EQ(found[i].maximum, row.maxima[i]);
        }
        EXPECT_LE(fans(kernel.root().sys, found.data(), 1), 1);
        EXPECT_LE(fans(kernel.root().sys, found.data(), 0), 0);
        EXPECT_LE(fans(kernel.root().sys, nullptr, -1), 0);
    }
}

class ThermalTest : public testing::Test {
protected:
    void zone(int number, const std::string& temperature, const Files& trips) const {
        const std::string folder = "sys/class/thermal/thermal_zone" + std::to_string(number);
        kernel.write(folder + "/temp", temperature);
        int index = 0;
        for (const auto& [kind, point] : trips) {
            const std::string trip = folder + "/trip_point_" + std::to_string(index++);
            kernel.write(trip + "_type", kind + "\n");
            kernel.write(trip + "_temp", point + "\n");
        }
    }
    void device(const std::string& type, const std::string& current, const std::string& maximum) const {
        kernel.write("sys/class/thermal/cooling_device0/type", type + "\n");
        kernel.write("sys/class/thermal/cooling_device0/cur_state", current);
        kernel.write("sys/class/thermal/cooling_device0/max_state", maximum);
    }
    std::int32_t fresh() const { return ThermalReadings(kernel.root().sys).state(100); }

    FixtureKernel kernel;
};

TEST_F(ThermalTest, zonesAgainstTheirOwnTripPoints) {
    const Files usual{{"active", "50000"}, {"critical", "105000"}, {"hot", "100000"}, {"passive", "90000"}};
    using Row = std::tuple<const char*, std::string, Files, std::int32_t>;
    for (const auto& [oddity, temperature, trips, state] : std::vector<Row>{
             {"fans turning is no pressure", "60000\n", usual, 0},
             {"at the passive point", "90000", usual, 1},
             {"at the hot point", "100000", usual, 2},
             {"just short of the critical margin", "101999", usual, 2},
             {"within three degrees of critical", "102000", usual, 3},
             {"beyond critical", "110000", usual, 3},
             {"a sensor that is not there reads absurdly high", "255000", usual, 0},
             {"absurdly low", "-274000", usual, 0},
             {"no number", "n/a", usual, 0},
             {"firmware without points says zero", "60000", {{"critical", "0"}, {"passive", "0"}}, 0},
             {"a passive point at room warmth", "60000", {{"passive", "20000"}}, 0},
             {"a critical point above all belief", "60000", {{"critical", "2147483647"}}, 0},
             {"no points at all", "99000", {}, 0},
         }) {
        SCOPED_TRACE(oddity);
        std::filesystem::remove_all(kernel.root().sys + "/class");
        zone(0, temperature, trips);
        EXPECT_EQ(fresh(), state);
    }
}

TEST_F(ThermalTest, theHottestZoneCounts) {
    EXPECT_EQ(fresh(), 0) << "a machine that tells nothing";
    zone(3, "95000", {{"passive", "90000"}});
    zone(11, "100000", {{"hot", "100000"}});
    EXPECT_EQ(fresh(), 2);
}

TEST_F(ThermalTest, devicesThatCoolByThrottling) {
    using Row = std::tuple<const char*, const char*, const char*, std::int32_t>;
    for (const auto& [type, current, maximum, state] : std::vector<Row>{{"Processor", "0", "10", 0},
                                                                        {"Processor", "1", "10", 1},
                                                                        {"Processor", "5", "10", 2},
                                                                        {"thermal-cpufreq-0", "3", "3", 2},
                                                                        {"intel_powerclamp", "-1", "50", 0},
                                                                        {"Processor", "11", "10", 0},
                                                                        {"Processor", "1", "0", 0},
                                                                        {"Fan", "1", "1", 0},
                                                                        {"LCD", "80", "100", 0}}) {
        SCOPED_TRACE(std::string(type) + " " + current);
        device(type, current, maximum);
        EXPECT_EQ(fresh(), state);
    }
}

TEST_F(ThermalTest, counterThatMovesIsFairUntilItRests) {
    const std::string count = "sys/devices/system/cpu/cpu0/thermal_throttle/package_throttle_count";
    kernel.write(count, "700\n");
    ThermalReadings readings(kernel.root().sys);
    EXPECT_EQ(readings.state(100), 0) << "what happened before is not held against it";
    kernel.write(count, "701\n");
    EXPECT_EQ(readings.state(104.9), 0) << "not read again so soon";
    EXPECT_EQ(readings.state(105), 1);
    EXPECT_EQ(readings.state(110), 0);
    kernel.write(count, "5\n");
    EXPECT_EQ(readings.state(115), 0) << "a counter that starts afresh";
    kernel.write(count, "6\n");
    EXPECT_EQ(readings.state(120), 1);
}

TEST_F(ThermalTest, tripPointsAreReadOnceAMinute) {
    zone(0, "80000", {{"passive", "90000"}});
    ThermalReadings readings(kernel.root().sys);
    EXPECT_EQ(readings.state(100), 0);
    zone(0, "80000", {{"passive", "70000"}});
    EXPECT_EQ(readings.state(155), 0);
    EXPECT_EQ(readings.state(160), 1);
}

} // namespace
} // namespace varnet::probes
