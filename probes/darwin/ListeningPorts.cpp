#include "probes/vn_probes.h"

#include <libproc.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>

namespace {

constexpr int spareBytes = 256; // for descriptors opened between the two looks at their table

struct Free {
    void operator()(void* storage) const noexcept { std::free(storage); }
};

/// Bytes of a process's descriptor table. The library tells a refusal as an empty table with an error.
/// @return -1 when it cannot be read
int listDescriptors(int32_t pid, void* table, int size) {
    errno = 0;
    const int answer = proc_pidinfo(pid, PROC_PIDLISTFDS, 0, table, size);
    return answer < 0 || (answer == 0 && errno != 0) ? -1 : answer;
}

/// The port that a descriptor listens on over TCP; 0 when it does not.
uint16_t listeningPort(int32_t pid, const proc_fdinfo& descriptor) {
    if (descriptor.proc_fdtype != PROX_FDTYPE_SOCKET) return 0;
    socket_fdinfo info{};
    static_assert(sizeof info == 792);
    constexpr int size = sizeof info;
    if (proc_pidfdinfo(pid, descriptor.proc_fd, PROC_PIDFDSOCKETINFO, &info, size) != size) return 0;
    if (info.psi.soi_kind != SOCKINFO_TCP) return 0;
    const tcp_sockinfo& tcp = info.psi.soi_proto.pri_tcp;
    if (tcp.tcpsi_state != TSI_S_LISTEN) return 0;
    const auto network = static_cast<uint16_t>(tcp.tcpsi_ini.insi_lport);
    return __builtin_bswap16(network);
}

} // namespace

int32_t vn_ports(int32_t pid, uint16_t* ports, int32_t capacity) {
    const int expected = listDescriptors(pid, nullptr, 0);
    if (expected < 1) return expected;
    const int size = expected + spareBytes;
    static_assert(sizeof(proc_fdinfo) == 8);
    const std::unique_ptr<proc_fdinfo[], Free> table(
        static_cast<proc_fdinfo*>(std::calloc(static_cast<std::size_t>(size), 1)));
    if (!table) return -1;
    const int answer = listDescriptors(pid, table.get(), size);
    if (answer < 0) return -1;

    const auto listed = static_cast<std::size_t>(std::min(answer, size)) / sizeof(proc_fdinfo);
    int32_t count = 0;
    for (const proc_fdinfo& descriptor : std::span(table.get(), listed)) {
        const uint16_t port = listeningPort(pid, descriptor);
        if (port == 0 || count >= capacity || std::find(ports, ports + count, port) != ports + count)
            continue;
        ports[count++] = port;
    }
    return count;
}

// Sockets are told process by process here: a dump has nothing to hold, and answers of the moment.
struct VNListeners {};

VNListeners* vn_listeners_open(void) {
    return new (std::nothrow) VNListeners;
}

int32_t vn_listeners_ports(const VNListeners*, int32_t pid, uint16_t* ports, int32_t capacity) {
    return vn_ports(pid, ports, capacity);
}

void vn_listeners_close(VNListeners* listeners) {
    delete listeners;
}
