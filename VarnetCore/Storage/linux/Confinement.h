#pragma once

#include <sys/types.h>

#include <atomic>
#include <string>
#include <vector>

namespace varnet {

/// What the kernel forbids a program that works for us on somebody else's files. Two nets, each held up by
/// itself where the kernel has only one of them:
/// - Landlock: nothing can be executed but the named programs and the loader that starts them, nothing can be
///   written but the null device and what was handed over open, no TCP connection made, no process outside
///   signalled.
/// - a system call filter: a program is started only under one of the exact names given, so that the loader
///   cannot be called upon to start another; no socket but a local one.
/// A thread that is confined stays so, with all that it starts. Linux only.
class Confinement {
public:
    /// @param programs absolute paths of what may be executed
    explicit Confinement(std::vector<std::string> programs);
    Confinement(const Confinement&) = delete;
    Confinement& operator=(const Confinement&) = delete;
    ~Confinement();

    /// Confines the calling thread for good.
    /// @return false when what the kernel offers could not be set up: then nothing is to be started
    bool enter();

    /// Descriptor to wait on for starts to be judged; -1 where the kernel offers no filter. Known once the
    /// thread has entered.
    int gate() const noexcept { return gate_; }
    /// Judges one start that waits at the gate. The first is our own.
    void judge();

private:
    bool restrictFiles() const;
    bool mayExecute(pid_t pid, unsigned long long name) const;

    const std::vector<std::string> programs_;
    std::atomic<int> gate_ = -1;
    bool first_ = true;
};

} // namespace varnet
