// The scale of the machine's time units.
#pragma once

#include <cstdint>

struct mach_timebase_info_data_t {
    std::uint32_t numer;
    std::uint32_t denom;
};

extern "C" int mach_timebase_info(mach_timebase_info_data_t* info);
