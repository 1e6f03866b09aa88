#include "VarnetApp/Platform/linux/ProgramStart.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

namespace varnet::platform {

namespace {

/// How the child is to differ from us: no signal blocked or ignored, no terminal of ours, nothing to read.
class Attributes {
public:
    Attributes() {
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_,
                                 POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        sigaddset(&signals, SIGCHLD);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawn_file_actions_init(&files_);
        posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() {
        posix_spawn_file_actions_destroy(&files_);
        posix_spawnattr_destroy(&attributes_);
    }

    const posix_spawnattr_t* attributes() const noexcept { return &attributes_; }
    const posix_spawn_file_actions_t* files() const noexcept { return &files_; }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t files_{};
};

void collect(pid_t child) {
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void collectLater(pid_t child) noexcept {
    try {
        std::thread(collect, child).detach();
    } catch (const std::system_error&) {
        waitpid(child, nullptr, WNOHANG); // no thread to be had: one that goes on will leave an entry behind
    }
}

} // namespace

std::string findProgram(std::string_view name, std::span<const std::string> folders) {
    for (const std::string& folder : folders) {
        std::string path = folder + "/";
        path += name;
        struct stat info{};
        if (stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && access(path.c_str(), X_OK) == 0) {
            return path;
        }
    }
    return {};
}

bool startProgram(const std::string& path, std::vector<std::string> arguments) {
    std::string name = path;
    std::vector<char*> words{name.data()};
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    const Attributes attributes;
    pid_t child = 0;
    if (posix_spawn(&child, path.c_str(), attributes.files(), attributes.attributes(), words.data(),
                    environ) != 0) {
        return false;
    }
    collectLater(child);
    return true;
}

} // namespace varnet::platform
