#include "probes/linux/Listeners.h"
#include "probes/vn_probes.h"
#include "tests/probes/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <iostream>
#include <memory>
#include <vector>

namespace varnet::probes {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

int bound(int family, int type, std::uint16_t port) {
    const int descriptor = socket(family, type, 0);
    union {
        sockaddr any;
        sockaddr_in four;
        sockaddr_in6 six;
    } address{};
    socklen_t size = sizeof address.four;
    address.any.sa_family = static_cast<sa_family_t>(family);
    address.four.sin_port = htons(port); // at the same place for both families
    if (family == AF_INET6) {
        size = sizeof address.six;
        address.six.sin6_addr = in6addr_loopback;
        const int only = 1;
        setsockopt(descriptor, IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof only);
    } else {
        address.four.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    }
    return bind(descriptor, &address.any, size) == 0 ? descriptor : -1;
}

/// A listener on this port, or on any free one. @return its descriptor, or -1
int listening(int family, std::uint16_t port = 0) {
    const int descriptor = bound(family, SOCK_STREAM, port);
    return descriptor >= 0 && listen(descriptor, 1) == 0 ? descriptor : -1;
}

std::uint16_t portOf(int descriptor) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port); // at the same place for both families
}

/// Ports of a process by every way there is to ask; they must agree.
std::vector<std::uint16_t> portsOf(pid_t pid, std::int32_t capacity = 16) {
    std::array<std::uint16_t, 16> found{};
    const auto take = [&](std::int32_t count) {
        return count < 0 ? std::vector<std::uint16_t>{0xffff} // not known
                         : std::vector<std::uint16_t>(found.begin(), found.begin() + count);
    };
    const auto direct = take(vn_ports(pid, found.data(), capacity));
    const std::unique_ptr<VNListeners, decltype(&vn_listeners_close)> dump(vn_listeners_open(),
                                                                           vn_listeners_close);
    EXPECT_EQ(take(vn_listeners_ports(dump.get(), pid, found.data(), capacity)), direct);
    const KernelRoot textTables = KernelRoot::live(); // another root is never asked through socket monitoring
    const auto tables = Listeners::open(textTables);
    EXPECT_TRUE(tables);
    if (tables) {
        EXPECT_EQ(take(tables->ports(pid, found.data(), capacity)), direct);
    }
    return direct;
}

TEST(LiveListeners, overIPv6) {
    const Child child([](SharedWords& words) {
        const int six = listening(AF_INET6);
        words.word = six < 0 ? 0 : portOf(six);
    });
    if (child.word() == 0) {
        std::cout << "no IPv6 here: checked that such a process has no ports\n";
        EXPECT_THAT(portsOf(child.pid()), IsEmpty());
        return;
    }
    EXPECT_THAT(portsOf(child.pid()), ElementsAre(child.word()));
}

TEST(LiveListeners, otherSocketsAreNone) {
    const Child child([](SharedWords&) {
        bound(AF_INET, SOCK_DGRAM, 0);  // UDP
        bound(AF_INET, SOCK_STREAM, 0); // not listening
        int pair[2];
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, pair) != 0) _exit(1);
        const int local = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un name{};
        name.sun_family = AF_UNIX; // no path: the kernel picks a name outside the file system
        if (bind(local, reinterpret_cast<const sockaddr*>(&name), sizeof(sa_family_t)) != 0) _exit(1);
        if (listen(local, 1) != 0) _exit(1);
        const int listener = listening(AF_INET);
        const int caller = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        socklen_t size = sizeof address;
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        if (connect(caller, reinterpret_cast<const sockaddr*>(&address), size) != 0) _exit(1);
        if (accept(listener, nullptr, nullptr) < 0) _exit(1);
        close(listener);
    });
    EXPECT_THAT(portsOf(child.pid()), IsEmpty());
}

TEST(LiveListeners, eachPortOnceUpToTheCapacity) {
    const Child child([](SharedWords& words) {
        const int first = listening(AF_INET);
        const int second = listening(AF_INET);
        if (first < 0 || second < 0) _exit(1);
        dup(first);
        // Another process may have the port over IPv6, or the machine none at all: the first still counts.
        listening(AF_INET6, portOf(first));
        words.word = portOf(first) * std::int64_t{65536} + portOf(second);
    });
    const auto first = static_cast<std::uint16_t>(child.word() / 65536);
    const auto second = static_cast<std::uint16_t>(child.word() % 65536);
    EXPECT_THAT(portsOf(child.pid()), UnorderedElementsAre(first, second));
    EXPECT_EQ(portsOf(child.pid(), 1).size(), 1U);
    EXPECT_THAT(portsOf(child.pid(), 0), IsEmpty());
}

TEST(LiveListeners, nothingOpenIsNonePortAndGoneIsUnknown) {
    Child child([](SharedWords&) { closefrom(0); });
    EXPECT_EQ(portsOf(child.pid()), std::vector<std::uint16_t>{});
    child.end();
    std::uint16_t port = 0;
    EXPECT_EQ(vn_ports(child.pid(), &port, 1), -1);
}

TEST(LiveListeners, processInAnotherNetworkNamespace) {
    const int ours = listening(AF_INET); // so that this namespace's own table is not empty
    const Child child([](SharedWords& words) {
        if (unshare(CLONE_NEWNET) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return;
        const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in any{}; // the loopback device is down there
        any.sin_family = AF_INET;
        if (bind(descriptor, reinterpret_cast<const sockaddr*>(&any), sizeof any) != 0) _exit(1);
        if (listen(descriptor, 1) != 0) _exit(1);
        words.word = portOf(descriptor);
    });
    if (child.word() == 0) {
        std::cout << "no network namespaces here: the prepared kernel stands in\n";
    } else {
        EXPECT_THAT(portsOf(child.pid()), ElementsAre(child.word()));
    }
    close(ours);
}

} // namespace

} // namespace varnet::probes
