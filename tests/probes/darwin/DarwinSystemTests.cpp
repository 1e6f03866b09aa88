#include "probes/vn_probes.h"
#include "tests/probes/darwin/FakeKernel.h"

#include <gtest/gtest.h>

#include <sys/time.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace varnet::probes {
namespace {

template <class Record>
std::string bytesOf(const Record& record) {
    std::string bytes(sizeof record, '\0');
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

struct MemoryRow {
    const char* name;
    std::function<void(FakeKernel&)> prepare;
    std::array<std::int32_t, 3> has; ///< swap, compressed, used
};

TEST(DarwinMemory, readsWhatThereIs) {
    constexpr vm_size_t page = 16'384;
    const std::vector<MemoryRow> rows = {
        {"everything", [](FakeKernel&) {}, {1, 1, 1}},
        {"more purgeable than there is of applications",
         [](FakeKernel& kernel) { kernel.pages->purgeable_count = 1001; },
         {1, 1, 0}},
        {"swap refused", [](FakeKernel& kernel) { kernel.named.clear(); }, {0, 1, 1}},
        {"swap cut off", [](FakeKernel& kernel) { kernel.named["vm.swapusage"].resize(24); }, {0, 1, 1}},
        {"counters refused", [](FakeKernel& kernel) { kernel.pages.reset(); }, {1, 0, 0}},
        {"no page size", [](FakeKernel& kernel) { kernel.pageSize = 0; }, {1, 0, 0}},
    };
    for (const MemoryRow& row : rows) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        kernel.pageSize = page;
        kernel.pages = vm_statistics64{};
        kernel.pages->wire_count = 4'000'000'000; // its bytes need 64 bits
        kernel.pages->purgeable_count = 10;
        kernel.pages->compressor_page_count = 200;
        kernel.pages->internal_page_count = 1000;
        kernel.named["vm.swapusage"] = bytesOf(xsw_usage{9, 8, 5, page, 0});
        row.prepare(kernel);
        VNSystemMemory memory;
        std::memset(&memory, 0x7f, sizeof memory);
        vn_system_memory(&memory);
        EXPECT_EQ((std::array{memory.hasSwap, memory.hasCompressed, memory.hasUsed}), row.has);
        EXPECT_EQ(memory.swapUsed, row.has[0] != 0 ? 5U : 0U);
        EXPECT_EQ(memory.compressed, row.has[1] != 0 ? 200 * page : 0U);
        const std::uint64_t purgeable = kernel.pages ? kernel.pages->purgeable_count : 0;
        EXPECT_EQ(memory.used, row.has[2] != 0 ? (1000 - purgeable + 200 + 4'000'000'000) * page : 0U);
        EXPECT_EQ(kernel.hostRights, 0) << "a right was kept";
    }
}

TEST(DarwinSystem, ticksModelAndBoot) {
    FakeKernel kernel;
    VNCPUTicks ticks{};
    EXPECT_EQ(vn_cpu_ticks(&ticks), -1);
    kernel.load = host_cpu_load_info{{4'294'967'295, 1, 2, 3}};
    EXPECT_EQ(vn_cpu_ticks(&ticks), 0);
    EXPECT_EQ(ticks.user, 4'294'967'295U) << "the last before it wraps";
    EXPECT_EQ((std::array{ticks.system, ticks.idle, ticks.nice}), (std::array<std::uint64_t, 3>{1, 2, 3}));
    kernel.load->cpu_ticks[CPU_STATE_USER] = 4;
    vn_cpu_ticks(&ticks);
    EXPECT_EQ(ticks.user, 4U) << "wrapped";
    EXPECT_EQ(kernel.hostRights, 0);

    std::array<char, 16> model{};
    EXPECT_NE(vn_model(model.data(), model.size()), 0);
    kernel.named["hw.model"] = std::string("Mac14,2\0", 8);
    EXPECT_EQ(vn_model(model.data(), model.size()), 0);
    EXPECT_STREQ(model.data(), "Mac14,2");

    EXPECT_EQ(vn_boot_time(), 0) << "refused";
    kernel.named["kern.boottime"] = bytesOf(timeval{.tv_sec = 1'700'000'000, .tv_usec = 900'000});
    EXPECT_EQ(vn_boot_time(), 1'700'000'000);
    kernel.named["kern.boottime"] = bytesOf(timeval{.tv_sec = 1'700'000'009, .tv_usec = 0});
    EXPECT_EQ(vn_boot_time(), 1'700'000'000) << "the clock was set";
}

struct HeatRow {
    const char* name;
    std::optional<std::uint64_t> pressure;
    std::int32_t state;
};

TEST(DarwinSensors, heat) {
    for (const HeatRow& row : {HeatRow{"nothing told", std::nullopt, 0}, HeatRow{"nominal", 0, 0},
                               HeatRow{"moderate", 1, 1}, HeatRow{"heavy", 2, 2}, HeatRow{"trapping", 3, 3},
                               HeatRow{"sleeping", 4, 3}, HeatRow{"no level", 30, 0}}) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        kernel.pressure = row.pressure;
        VNSensors* const sensors = vn_sensors_open(nullptr);
        EXPECT_EQ(vn_sensors_thermal_state(sensors), row.state);
        vn_sensors_close(sensors);
        EXPECT_EQ(kernel.subscriptions, 0);
    }
}

FakeKey number(const std::string& bytes, const std::string& type = "ui16", std::uint32_t size = 2) {
    return {.type = type, .data = bytes, .size = size};
}

FakeKey speed(float rpm) {
    return number(bytesOf(rpm), "flt ", 4);
}

struct FanRow {
    const char* name;
    std::map<std::string, FakeKey> keys; ///< beside FNum, the number of fans
    std::int32_t count;
    std::vector<VNFan> fans = {};
    std::int32_t told = 1; ///< FNum
    std::int32_t capacity = 10;
};

std::vector<FanRow> fanRows() {
    using namespace std::string_literals;
    FakeKey refused = speed(1000);
    refused.valueResult = 0x84;
    FakeKey unexplained = speed(1000);
    unexplained.informationResult = 0x84;
    return {
        {"fanless", {}, 0, {}, 0},
        {"eleven", {}, -1, {}, 11},
        {"no room", {{"F0Ac", speed(1000)}}, 0, {}, 1, 0},
        {"room for the first alone: the second is not read", {{"F0Ac", speed(1)}}, 1, {{0, 1, 0}}, 2, 1},
        {"every way of writing numbers",
         {{"F0Ac", speed(1200.5F)},
          {"F0Mx", number("\x4e\x20"s)},         // 20000
          {"F1Ac", number("\x12\xc2"s, "fpe2")}, // 4802 quarters
          {"F1Mx", number("\x12\xc3"s, "fpe2")}, // one more
          {"F2Ac", number("\x04\xb0"s, "ui16")}, // 1200
          {"F3Ac", number("\xff"s, "ui8 ", 1)}},
         4,
         {{0, 1200.5, 20'000}, {1, 1200.5, 1200.75}, {2, 1200, 0}, {3, 255, 0}},
         4},
        {"one too fast voids the reading", {{"F0Ac", speed(1000)}, {"F1Ac", speed(20'001)}}, -1, {}, 2},
        {"one that is missing voids it", {{"F0Ac", speed(1000)}}, -1, {}, 2},
        {"top speed too high", {{"F0Ac", speed(1000)}, {"F0Mx", speed(20'001)}}, 1, {{0, 1000, 0}}},
        {"top speed below the speed", {{"F0Ac", speed(1000)}, {"F0Mx", speed(999)}}, 1, {{0, 1000, 0}}},
        {"top speed that is the speed", {{"F0Ac", speed(9)}, {"F0Mx", speed(9)}}, 1, {{0, 9, 9}}},
        {"top speed refused", {{"F0Ac", speed(1000)}, {"F0Mx", refused}}, 1, {{0, 1000, 0}}},
        {"speed refused", {{"F0Ac", refused}}, -1},
        {"key unknown to the controller", {{"F0Ac", unexplained}}, -1},
        {"below zero", {{"F0Ac", speed(-1)}}, -1},
        {"not finite", {{"F0Ac", number("\0\0\xc0\x7f"s, "flt ", 4)}}, -1},
        {"type of something else", {{"F0Ac", number("\0\0"s, "si16")}}, -1},
        {"no bytes", {{"F0Ac", number(""s, "ui16", 0)}}, -1},
        {"more bytes than a message holds", {{"F0Ac", number("\1\1"s, "ui16", 33)}}, -1},
    };
}

TEST(DarwinSensors, fans) {
    for (const FanRow& row : fanRows()) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        kernel.keys = row.keys;
        kernel.keys["FNum"] = number(std::string(1, static_cast<char>(row.told)), "ui8 ", 1);
        std::array<VNFan, 10> fans;
        fans.fill({77, 77, 77});
        EXPECT_EQ(vn_fans(fans.data(), row.capacity), row.count);
        for (std::size_t at = 0; at < row.fans.size(); ++at) {
            EXPECT_EQ(fans[at].id, row.fans[at].id);
            EXPECT_EQ(fans[at].rpm, row.fans[at].rpm);
            EXPECT_EQ(fans[at].maximum, row.fans[at].maximum);
        }
        EXPECT_EQ(kernel.services, 0) << "the service was kept";
        EXPECT_EQ(kernel.connections, 0) << "the connection was left open";
    }
    for (const char* const missing : {"controller", "connection", "number of fans"}) {
        SCOPED_TRACE(missing);
        FakeKernel kernel;
        kernel.hasController = std::string(missing) != "controller";
        kernel.controllerOpens = std::string(missing) != "connection";
        VNFan fan;
        EXPECT_EQ(vn_fans(&fan, 1), -1);
        EXPECT_EQ(kernel.services + kernel.connections, 0);
    }
}

} // namespace
} // namespace varnet::probes
