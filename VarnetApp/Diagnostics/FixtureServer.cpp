#include "VarnetApp/Diagnostics/FixtureServer.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace varnet {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr auto patience = std::chrono::seconds(10);
constexpr const char* interpreter = "/usr/bin/python3";

/// The port in the line by which the server says that it listens; empty when none comes in time.
std::optional<int> readPort(int output) {
    const auto deadline = SteadyClock::now() + patience;
    std::string text;
    while (text.size() < 4096) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - SteadyClock::now()).count();
        pollfd waiting{.fd = output, .events = POLLIN, .revents = 0};
        if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) < 0) return std::nullopt;
        std::array<char, 512> buffer{};
        const ssize_t got = read(output, buffer.data(), buffer.size());
        if (got <= 0) return std::nullopt;
        text.append(buffer.data(), static_cast<std::size_t>(got));
        constexpr std::string_view word = " port ";
        const std::size_t at = text.find(word);
        if (at == std::string::npos || text.find(' ', at + word.size()) == std::string::npos) continue;
        int port = 0;
        const char* const begin = text.data() + at + word.size();
        std::from_chars(begin, text.data() + text.size(), port);
        return port > 0 ? std::optional(port) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::expected<FixtureServer, std::string> FixtureServer::start(const std::filesystem::path& folder) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0) return std::unexpected(std::generic_category().message(errno));
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::array<std::string, 7> words{"python3", "-u", "-m", "http.server", "0", "--bind", "127.0.0.1"};
    std::array<char*, words.size() + 1> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i)
        arguments[i] = words[i].data();
    pid_t pid = 0;
    const int failure = posix_spawn(&pid, interpreter, &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipe[1]);
    if (failure != 0) {
        close(pipe[0]);
        return std::unexpected("Fixture server could not be started: " +
                               std::generic_category().message(failure));
    }
    FixtureServer server(pid, pipe[0]);
    const auto port = readPort(pipe[0]);
    if (!port) return std::unexpected("Fixture server does not listen");
    server.port_ = *port;
    return server;
}

FixtureServer::FixtureServer(FixtureServer&& other) noexcept
    : pid_(std::exchange(other.pid_, 0)), output_(std::exchange(other.output_, -1)), port_(other.port_) {}

FixtureServer::~FixtureServer() {
    if (pid_ <= 0) return;
    // Not collected yet, so the pid is still this very child's, whether it lives or not.
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    close(output_);
}

} // namespace varnet
