#pragma once

#include <sys/types.h>

#include <expected>
#include <filesystem>
#include <string>

namespace varnet {

/// A small local web server that this program starts, to have something of its own to find and stop. It
/// listens on a free loopback port and ends with this object.
class FixtureServer {
public:
    /// Returns once it listens, or after 10 seconds at most.
    /// @param folder its working directory
    /// @return what went wrong when it does not
    static std::expected<FixtureServer, std::string> start(const std::filesystem::path& folder);

    FixtureServer(FixtureServer&& other) noexcept;
    FixtureServer& operator=(FixtureServer&&) = delete;
    FixtureServer(const FixtureServer&) = delete;
    FixtureServer& operator=(const FixtureServer&) = delete;
    ~FixtureServer();

    pid_t pid() const noexcept { return pid_; }
    int port() const noexcept { return port_; }

private:
    FixtureServer(pid_t pid, int output) noexcept : pid_(pid), output_(output) {}

    pid_t pid_;  ///< 0 when moved from
    int output_; ///< open as long as it lives: a server that cannot write ends
    int port_ = 0;
};

} // namespace varnet
