#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet::platform {

/// One living process, as far as finding applications needs it.
struct RunningProcess {
    std::int32_t pid = 0;
    std::int32_t parent = 0;
    std::uint32_t uid = 0;   ///< the effective user
    std::uint64_t start = 0; ///< microseconds since 1970
};

/// How the catalogue sees processes.
class ProcessAccess {
public:
    struct Identity {
        std::uint64_t start = 0; ///< microseconds since 1970
        std::uint32_t uid = 0;   ///< the effective user
    };

    virtual ~ProcessAccess() = default;

    /// All living processes but the kernel's own; empty on failure.
    virtual std::optional<std::vector<RunningProcess>> processes() = 0;
    /// Empty when the process has gone or cannot be read.
    virtual std::optional<Identity> identity(std::int32_t pid) = 0;
    /// Executable path; empty when not known.
    virtual std::string executable(std::int32_t pid) = 0;
    /// Text of the process's `cgroup` file; empty when not known.
    virtual std::string controlGroup(std::int32_t pid) = 0;
};

} // namespace varnet::platform
