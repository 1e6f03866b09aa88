#include "VarnetApp/Platform/linux/SignalQuitting.h"

#include "probes/vn_probes.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

namespace varnet::platform {

namespace {

/// A descriptor of a process, closed at its end. Kernels and sandboxes may refuse one.
class ProcessDescriptor {
public:
    explicit ProcessDescriptor(std::int32_t pid)
        : descriptor_(static_cast<int>(syscall(SYS_pidfd_open, pid, 0))) {}
    ProcessDescriptor(ProcessDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    ProcessDescriptor& operator=(ProcessDescriptor&&) = delete;
    ~ProcessDescriptor() {
        if (descriptor_ >= 0) close(descriptor_);
    }

    /// Whether the process has ended; empty when this cannot tell.
    std::optional<bool> ended() const {
        if (descriptor_ < 0) return std::nullopt;
        pollfd watched{descriptor_, POLLIN, 0};
        const int ready = poll(&watched, 1, 0);
        return ready < 0 ? std::nullopt : std::optional(ready > 0);
    }

private:
    int descriptor_;
};

class SignalledApplication final : public QuittableApplication {
public:
    /// @param process opened before the identity was read
    SignalledApplication(ApplicationDescriptor application, ApplicationQuitting::Identity identity,
                         ProcessDescriptor process)
        : application_(std::move(application)), identity_(identity), process_(std::move(process)) {}

    std::string bundlePath() const override { return application_.bundlePath; }
    bool terminate() override { return signal(SIGTERM); }
    bool forceTerminate() override { return signal(SIGKILL); }

    bool isTerminated() override {
        if (const auto ended = process_.ended()) return *ended;
        ApplicationQuitting::Identity now;
        if (vn_identity(application_.pid, &now.start, &now.uid) == 0) return now.start != identity_.start;
        return vn_exists(application_.pid) == ESRCH;
    }

private:
    bool signal(int number) {
        return !isTerminated() &&
               vn_signal_checked(application_.pid, identity_.start, identity_.uid, number) == 0;
    }

    // Constant after construction.
    const ApplicationDescriptor application_;
    const ApplicationQuitting::Identity identity_;
    const ProcessDescriptor process_;
};

} // namespace

std::optional<ApplicationQuitting::Identity> SignalQuitting::identity(std::int32_t pid) {
    Identity identity;
    if (vn_identity(pid, &identity.start, &identity.uid) != 0) return std::nullopt;
    return identity;
}

std::int32_t SignalQuitting::exists(std::int32_t pid) {
    return vn_exists(pid);
}

std::unique_ptr<QuittableApplication> SignalQuitting::find(std::int32_t pid) {
    const std::vector<ApplicationDescriptor> running = catalog_.snapshot();
    const auto found = std::ranges::find(running, pid, &ApplicationDescriptor::pid);
    if (found == running.end()) return nullptr;
    // In this order: should the pid change hands in between, the identity is not the catalogue's any more.
    ProcessDescriptor process(pid);
    const auto now = identity(pid);
    if (!now || (found->processStart && *found->processStart != now->start)) return nullptr;
    return std::make_unique<SignalledApplication>(*found, *now, std::move(process));
}

std::unique_ptr<ApplicationQuitting> makeApplicationQuitting(ApplicationCatalog& catalog) {
    return std::make_unique<SignalQuitting>(catalog);
}

} // namespace varnet::platform
