#include "VarnetCore/Storage/CommandStart.h"

#include "VarnetCore/Storage/CommandSpawn.h"
#include "VarnetCore/Storage/OwnedDescriptor.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/event.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace varnet {

/// Nothing is confined here beyond what the command itself is told and the time and length it is given.
struct CommandStart::Kernel {
    const BoundedCommand& command;
    const OwnedDescriptor events{kqueue()};
    pid_t pid = -1;
};

CommandStart::CommandStart(const BoundedCommand& command) : kernel_(new Kernel{.command = command}) {}

CommandStart::~CommandStart() = default;

pid_t CommandStart::start() {
    const OwnedDescriptor nullDevice(open("/dev/null", O_RDWR | O_CLOEXEC));
    if (nullDevice.number() < 0) return -1;
    kernel_->pid = spawnCommand(kernel_->command, nullDevice.number());
    if (kernel_->pid < 0) return -1;
    struct kevent end{};
    EV_SET(&end, static_cast<uintptr_t>(kernel_->pid), EVFILT_PROC, EV_ADD | EV_ONESHOT, NOTE_EXIT, 0,
           nullptr);
    // One that has ended already, or cannot be watched, is seen after the pause.
    kevent(kernel_->events.number(), &end, 1, nullptr, 0, nullptr);
    return kernel_->pid;
}

void CommandStart::wait(int milliseconds) {
    const timespec pause{.tv_sec = 0, .tv_nsec = milliseconds * 1'000'000L};
    struct kevent end{};
    if (kevent(kernel_->events.number(), nullptr, 0, &end, 1, &pause) < 0) nanosleep(&pause, nullptr);
    // No limit can be put on another process here: it is measured between two pauses.
    struct stat output{};
    const bool measured = fstat(kernel_->command.output, &output) == 0 && output.st_size > 0;
    if (measured && static_cast<std::uint64_t>(output.st_size) > kernel_->command.outputLimit) {
        kill(kernel_->pid, SIGKILL);
    }
}

} // namespace varnet
