// Counters of the machine, as far as the probes use them.
#pragma once

#include <cstdint>

typedef std::uint32_t mach_port_t;
typedef int kern_return_t;
typedef int integer_t;
typedef std::uint32_t natural_t;
typedef std::uint32_t mach_msg_type_number_t;
typedef std::uintptr_t vm_size_t;
typedef integer_t* host_info_t;

#define MACH_PORT_NULL 0U
#define HOST_CPU_LOAD_INFO 3
#define HOST_VM_INFO64 4
#define HOST_CPU_LOAD_INFO_COUNT 4
enum { CPU_STATE_USER = 0, CPU_STATE_SYSTEM = 1, CPU_STATE_IDLE = 2, CPU_STATE_NICE = 3 };

struct host_cpu_load_info {
    natural_t cpu_ticks[4];
};

struct alignas(8) vm_statistics64 {
    natural_t free_active_inactive[3];
    natural_t wire_count;
    std::uint64_t faults[9];
    natural_t purgeable_count;
    natural_t speculative_count;
    std::uint64_t swaps[4];
    natural_t compressor_page_count;
    natural_t throttled_count;
    natural_t external_page_count;
    natural_t internal_page_count;
    std::uint64_t uncompressed;
};

extern "C" {
mach_port_t mach_host_self();
mach_port_t mach_task_self();
kern_return_t mach_port_deallocate(mach_port_t task, mach_port_t port);
kern_return_t host_page_size(mach_port_t host, vm_size_t* size);
kern_return_t host_statistics(mach_port_t host, int flavor, host_info_t info, mach_msg_type_number_t* count);
kern_return_t host_statistics64(mach_port_t host, int flavor, host_info_t info,
                                mach_msg_type_number_t* count);
}
