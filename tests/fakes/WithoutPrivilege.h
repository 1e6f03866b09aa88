#pragma once

#include <sys/fsuid.h>
#include <unistd.h>

namespace varnet {

/// While it lives, this thread meets permissions as a plain user does, also when tests run as root. Files
/// that it makes belong to that user.
class WithoutPrivilege {
public:
    static constexpr uid_t user = 65534;

    WithoutPrivilege() {
        if (geteuid() == 0) setfsuid(user);
    }
    WithoutPrivilege(const WithoutPrivilege&) = delete;
    WithoutPrivilege& operator=(const WithoutPrivilege&) = delete;
    ~WithoutPrivilege() {
        if (geteuid() == 0) setfsuid(0);
    }
};

} // namespace varnet
