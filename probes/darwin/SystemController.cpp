#include "probes/darwin/SystemController.h"

#include "probes/darwin/DarwinCalls.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <optional>

namespace varnet::probes {

namespace {

constexpr std::uint32_t callSelector = 2;
constexpr std::uint8_t commandReadValue = 5;
constexpr std::uint8_t commandReadInformation = 9;
constexpr std::size_t dataCapacity = 32;

/// What the driver takes and gives.
struct Message {
    std::uint32_t key;
    std::uint8_t version[8];
    std::uint8_t powerLimits[16];
    struct Information {
        std::uint32_t size;
        std::uint32_t type;
        std::uint8_t attributes;
    } information;
    std::uint8_t result;
    std::uint8_t status;
    std::uint8_t command;
    std::uint32_t number;
    std::array<std::uint8_t, dataCapacity> data;
};
static_assert(sizeof(Message) == 80);
static_assert(offsetof(Message, information) == 28 && offsetof(Message, command) == 42 &&
              offsetof(Message, data) == 48);

/// Four characters as the driver packs them.
constexpr std::uint32_t code(const char* text) noexcept {
    std::uint32_t packed = 0;
    for (int at = 0; at < 4; ++at)
        packed = packed << 8U | static_cast<std::uint8_t>(text[at]);
    return packed;
}

bool call(mach_port_t connection, const Message& input, Message& output) noexcept {
    output = {};
    std::size_t size = sizeof output;
    return IOConnectCallStructMethod(connection, callSelector, &input, sizeof input, &output, &size) == 0 &&
           output.result == 0;
}

std::optional<double> decoded(std::uint32_t type,
                              const std::array<std::uint8_t, dataCapacity>& data) noexcept {
    const auto word = static_cast<double>(data[0] << 8U | data[1]);
    switch (type) {
    case code("flt "): {
        float number = 0;
        std::memcpy(&number, data.data(), sizeof number);
        return number;
    }
    case code("fpe2"):
        return word / 4;
    case code("ui16"):
        return word;
    case code("ui8 "):
        return data[0];
    default:
        return std::nullopt;
    }
}

} // namespace

SystemController::SystemController() noexcept {
    const mach_port_t service = IOServiceGetMatchingService(MACH_PORT_NULL, IOServiceMatching("AppleSMC"));
    if (service == MACH_PORT_NULL) return;
    open_ = IOServiceOpen(service, mach_task_self(), 0, &connection_) == 0;
    IOObjectRelease(service);
}

SystemController::~SystemController() {
    if (open_) IOServiceClose(connection_);
}

std::int32_t smc_read(mach_port_t connection, const char* key, double* value) noexcept {
    Message request{};
    Message reply{};
    request.key = code(key);
    request.command = commandReadInformation;
    if (!call(connection, request, reply)) return -1;
    request.information = reply.information;
    if (request.information.size < 1 || request.information.size > dataCapacity) return -1;
    request.command = commandReadValue;
    if (!call(connection, request, reply)) return -1;
    const std::optional<double> number = decoded(request.information.type, reply.data);
    if (!number) return -1;
    *value = *number;
    return std::isfinite(*number) && *number >= 0 ? 0 : -1;
}

} // namespace varnet::probes
