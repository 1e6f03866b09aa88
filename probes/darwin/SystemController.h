#pragma once

#include <mach/mach.h>

#include <cstdint>

namespace varnet::probes {

/// An open connection to the System Management Controller, closed with the object.
class SystemController {
public:
    SystemController() noexcept;
    SystemController(const SystemController&) = delete;
    SystemController& operator=(const SystemController&) = delete;
    ~SystemController();

    /// False when the machine has no controller or it cannot be reached.
    bool open() const noexcept { return open_; }
    mach_port_t connection() const noexcept { return connection_; }

private:
    mach_port_t connection_ = MACH_PORT_NULL;
    bool open_ = false;
};

/// Reads a number from the controller.
/// @param key four characters
/// @return 0; -1 when there is no such key, its type is none of a number, or the number is below zero or not
///         finite
std::int32_t smc_read(mach_port_t connection, const char* key, double* value) noexcept;

} // namespace varnet::probes
