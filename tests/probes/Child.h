#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <functional>

namespace varnet::probes {

/// Memory that a child shares with the test: needs no descriptor.
struct SharedWords {
    std::atomic<bool> ready;
    std::atomic<std::int64_t> word; ///< whatever the body wants to tell
};

/// A child of the test. It lives until it is ended, or as long as this object and the test do.
class Child {
public:
    /// Forks; the child calls the body and then sleeps for good. Returns when the body has been run and the
    /// child sleeps.
    explicit Child(const std::function<void(SharedWords&)>& body = {});
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    pid_t pid() const noexcept { return pid_; }
    std::int64_t word() const noexcept { return shared_->word; }

    /// Kills it and leaves it uncollected.
    void leaveUncollected();
    /// Waits for its end and collects it. @return the status of waitpid
    int collect();
    /// Kills and collects it.
    void end();

private:
    SharedWords* shared_;
    pid_t pid_;
    bool collected_ = false;
};

/// What a test does in a process that it forks: dies with its parent, returns at once when that has ended.
void dieWithParent(pid_t parent);

/// Waits for a condition that another process brings about; false after 20 seconds.
bool eventually(const std::function<bool()>& condition);

/// The letter of a process's state: 'S' asleep, 'Z' waits to be collected; '?' when there is none.
char stateOf(pid_t pid);

} // namespace varnet::probes
