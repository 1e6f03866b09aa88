#pragma once

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

/// A child that the test started, ended with it. Only such children are ever signalled.
class ChildProcess {
public:
    ChildProcess(const std::filesystem::path& program, std::vector<std::string> arguments,
                 const std::filesystem::path& folder) {
        std::vector<char*> vector;
        for (std::string& argument : arguments)
            vector.push_back(argument.data());
        vector.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
        const int error = posix_spawn(&pid_, program.c_str(), &actions, nullptr, vector.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) throw std::runtime_error("cannot start " + program.string());
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { end(SIGKILL); }

    pid_t pid() const noexcept { return pid_; }

    /// Signals the child and collects it.
    void end(int signal) {
        if (pid_ <= 0) return;
        kill(pid_, signal);
        waitpid(std::exchange(pid_, 0), nullptr, 0);
    }

    /// Its exit status, or the number of the signal that ended it with a minus; empty while it runs.
    std::optional<int> ended() {
        int status = 0;
        if (pid_ <= 0 || waitpid(pid_, &status, WNOHANG) != pid_) return std::nullopt;
        pid_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    pid_t pid_ = 0;
};

} // namespace varnet
