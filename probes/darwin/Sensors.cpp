#include "probes/darwin/DarwinCalls.h"
#include "probes/darwin/SystemController.h"
#include "probes/vn_probes.h"

#include <libkern/OSThermalNotification.h>

#include <algorithm>
#include <new>

using varnet::probes::smc_read;
using varnet::probes::SystemController;

namespace {

constexpr double mostFans = 10;       // as many as one digit in a key can tell apart
constexpr double fastestFan = 20'000; // revolutions per minute; beyond it a reading is none

/// @return false when the fan's speed cannot be read or cannot be
bool readFan(const SystemController& controller, int32_t id, VNFan& fan) {
    fan = {.id = id, .rpm = 0, .maximum = 0};
    char key[] = "F0Ac";
    key[1] = static_cast<char>('0' + id);
    if (smc_read(controller.connection(), key, &fan.rpm) != 0 || fan.rpm > fastestFan) return false;
    key[2] = 'M';
    key[3] = 'x';
    double top = 0;
    const bool told = smc_read(controller.connection(), key, &top) == 0;
    if (told && top > 0 && top <= fastestFan && top >= fan.rpm) fan.maximum = top;
    return true;
}

} // namespace

int32_t vn_fans(VNFan* fans, int32_t capacity) {
    const SystemController controller;
    double number = 0;
    if (!controller.open() || smc_read(controller.connection(), "FNum", &number) != 0) return -1;
    if (number > mostFans) return -1;
    const int32_t count = std::min(static_cast<int32_t>(number), capacity);
    for (int32_t id = 0; id < count; ++id)
        if (!readFan(controller, id, fans[id])) return -1;
    return count;
}

/// Fans are read through a connection of their own each time; only heat is subscribed to.
struct VNSensors {
    VNSensors() noexcept
        : registered(notify_register_check(kOSThermalNotificationPressureLevelName, &token) == 0) {}
    VNSensors(const VNSensors&) = delete;
    VNSensors& operator=(const VNSensors&) = delete;
    ~VNSensors() {
        if (registered) notify_cancel(token);
    }

    int token = 0;
    const bool registered;
};

VNSensors* vn_sensors_open(const char*) {
    return new (std::nothrow) VNSensors;
}

int32_t vn_sensors_fans(VNSensors*, VNFan* fans, int32_t capacity) {
    return vn_fans(fans, capacity);
}

int32_t vn_sensors_thermal_state(VNSensors* sensors) {
    uint64_t level = 0;
    if (!sensors->registered || notify_get_state(sensors->token, &level) != 0) return 0;
    switch (level) {
    case kOSThermalPressureLevelModerate:
        return 1;
    case kOSThermalPressureLevelHeavy:
        return 2;
    case kOSThermalPressureLevelTrapping:
    case kOSThermalPressureLevelSleeping:
        return 3;
    default:
        return 0;
    }
}

void vn_sensors_close(VNSensors* sensors) {
    delete sensors;
}
