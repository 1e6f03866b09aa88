#pragma once

#include <mach/mach.h>

#include <cstddef>
#include <cstdint>

// The few calls beyond the system library's own headers that the probes make, declared here so that this
// layer compiles wherever those headers are, with or without the frameworks' own.

extern "C" {

// IOKit. Objects are Mach ports; the matching dictionary is consumed by the search.
void* IOServiceMatching(const char* name);
mach_port_t IOServiceGetMatchingService(mach_port_t mainPort, const void* matching);
kern_return_t IOServiceOpen(mach_port_t service, mach_port_t owningTask, std::uint32_t type,
                            mach_port_t* connection);
kern_return_t IOServiceClose(mach_port_t connection);
kern_return_t IOObjectRelease(mach_port_t object);
kern_return_t IOConnectCallStructMethod(mach_port_t connection, std::uint32_t selector, const void* input,
                                        std::size_t inputSize, void* output, std::size_t* outputSize);

// Notifications that carry a state. A result of 0 is success.
std::uint32_t notify_register_check(const char* name, int* token);
std::uint32_t notify_get_state(int token, std::uint64_t* state);
std::uint32_t notify_cancel(int token);
}
