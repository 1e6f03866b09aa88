#include "probes/linux/SocketDump.h"

#include "probes/linux/ProcText.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace varnet::probes {

namespace {

constexpr unsigned listenState = 10; // TCP_LISTEN of the kernel's own numbering

struct Request {
    nlmsghdr header;
    inet_diag_req_v2 body;
};

bool dumpFamily(int socket, std::uint8_t family, std::vector<Listener>& listeners) {
    Request request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.header.nlmsg_seq = family;
    request.body.sdiag_family = family;
    request.body.sdiag_protocol = IPPROTO_TCP;
    request.body.idiag_states = 1U << listenState;
    if (send(socket, &request, sizeof request, 0) != static_cast<ssize_t>(sizeof request)) return false;

    alignas(nlmsghdr) std::array<char, 32768> buffer;
    for (;;) {
        const ssize_t got = recv(socket, buffer.data(), buffer.size(), 0);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        std::size_t left = static_cast<std::size_t>(got);
        for (const char* at = buffer.data(); left >= sizeof(nlmsghdr);) {
            nlmsghdr header;
            std::memcpy(&header, at, sizeof header);
            if (header.nlmsg_len < sizeof header || header.nlmsg_len > left) return false;
            if (header.nlmsg_seq == family) {
                if (header.nlmsg_type == NLMSG_DONE) return true;
                if (header.nlmsg_type == NLMSG_ERROR) return false;
                if (header.nlmsg_len >= NLMSG_HDRLEN + sizeof(inet_diag_msg)) {
                    inet_diag_msg message;
                    std::memcpy(&message, at + NLMSG_HDRLEN, sizeof message);
                    const std::uint16_t port = ntohs(message.id.idiag_sport);
                    if (message.idiag_inode != 0 && port != 0)
                        listeners.push_back({message.idiag_inode, port});
                }
            }
            const std::size_t step = std::min<std::size_t>(NLMSG_ALIGN(header.nlmsg_len), left);
            at += step;
            left -= step;
        }
    }
}

} // namespace

bool dumpListeners(std::vector<Listener>& listeners) {
    const Descriptor connection(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    if (!connection.valid()) return false;
    // The kernel answers at once or not at all; a lost answer must not stop a pass.
    const timeval patience{.tv_sec = 1, .tv_usec = 0};
    setsockopt(connection.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    // A kernel without IPv6 has no such sockets to tell of.
    if (!dumpFamily(connection.get(), AF_INET, listeners)) return false;
    const std::size_t before = listeners.size();
    if (!dumpFamily(connection.get(), AF_INET6, listeners)) listeners.resize(before);
    return true;
}

} // namespace varnet::probes
