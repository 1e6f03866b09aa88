#include "tests/probes/PidNamespace.h"

#include "tests/probes/Child.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <fstream>

namespace varnet::probes {

namespace {

constexpr int refused = 77;

bool writeText(const char* path, const std::string& text) {
    std::ofstream file(path);
    file << text << std::flush;
    return file.good();
}

bool unsharePids() {
    if (unshare(CLONE_NEWPID | CLONE_NEWNS) == 0) return true;
    const auto uid = std::to_string(getuid());
    const auto gid = std::to_string(getgid());
    return unshare(CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNS) == 0 &&
           writeText("/proc/self/setgroups", "deny") &&
           writeText("/proc/self/uid_map", uid + " " + uid + " 1") &&
           writeText("/proc/self/gid_map", gid + " " + gid + " 1");
}

bool prepareFolders() {
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("proc", "/proc", "proc", 0, nullptr) == 0 &&
           writeText("/proc/sys/kernel/ns_last_pid", "300");
}

std::string guarded(const std::function<std::string()>& body) {
    try {
        return body();
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// The outer of the two processes: the namespace begins with its child.
[[noreturn]] void runOuter(const std::function<std::string()>& body, int result) {
    if (!unsharePids()) _exit(refused);
    const pid_t self = getpid();
    const pid_t first = fork();
    if (first == 0) {
        // The parent is outside, where a parent's pid cannot be seen.
        dieWithParent(0);
        if (!prepareFolders()) _exit(refused);
        const std::string problem = guarded(body);
        const ssize_t written = write(result, problem.data(), problem.size());
        _exit(written == static_cast<ssize_t>(problem.size()) ? 0 : 1);
    }
    int status = 0;
    if (first < 0 || getpid() != self || waitpid(first, &status, 0) != first) _exit(1);
    _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
}

} // namespace

std::optional<std::string> runInPidNamespace(const std::function<std::string()>& body) {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) return "no pipe";
    const pid_t parent = getpid();
    const pid_t outer = fork();
    if (outer == 0) {
        dieWithParent(parent);
        close(ends[0]);
        runOuter(body, ends[1]);
    }
    close(ends[1]);
    std::string problem;
    char buffer[512];
    for (ssize_t got = 0; (got = read(ends[0], buffer, sizeof buffer)) > 0;)
        problem.append(buffer, static_cast<std::size_t>(got));
    close(ends[0]);
    int status = 0;
    if (outer < 0 || waitpid(outer, &status, 0) != outer) return "no namespace process";
    if (WIFEXITED(status) && WEXITSTATUS(status) == refused) return std::nullopt;
    if (problem.empty() && (!WIFEXITED(status) || WEXITSTATUS(status) != 0))
        return "the namespace ended early";
    return problem;
}

bool forkWithPid(pid_t pid, const std::function<void()>& body) {
    if (!writeText("/proc/sys/kernel/ns_last_pid", std::to_string(pid - 1))) return false;
    const pid_t child = fork();
    if (child == 0) {
        body();
        for (;;)
            pause();
    }
    return child == pid;
}

} // namespace varnet::probes
