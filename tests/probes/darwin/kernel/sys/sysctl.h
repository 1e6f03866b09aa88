// Named kernel values, as far as the probes use them.
#pragma once

#include <cstddef>
#include <cstdint>

#define CTL_KERN 1
#define KERN_PROCARGS2 49

struct xsw_usage {
    std::uint64_t xsu_total;
    std::uint64_t xsu_avail;
    std::uint64_t xsu_used;
    std::uint32_t xsu_pagesize;
    std::uint32_t xsu_encrypted;
};

extern "C" {
int sysctl(int* name, unsigned length, void* old, std::size_t* oldSize, void* fresh, std::size_t freshSize);
int sysctlbyname(const char* name, void* old, std::size_t* oldSize, void* fresh, std::size_t freshSize);
}
