#include "VarnetCore/Storage/CommandStart.h"

#include "VarnetCore/Storage/CommandSpawn.h"
#include "VarnetCore/Storage/OwnedDescriptor.h"
#include "VarnetCore/Storage/linux/Confinement.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace varnet {

namespace {

std::vector<std::string> programsOf(const BoundedCommand& command) {
    std::vector<std::string> programs{command.program};
    programs.insert(programs.end(), command.helpers.begin(), command.helpers.end());
    return programs;
}

/// Starts the program on a thread of its own, which is confined for good and ends. This thread meanwhile
/// judges what may be executed: the very first start waits for that already.
pid_t spawnConfined(const BoundedCommand& command, Confinement& confinement) {
    const OwnedDescriptor nullDevice(open("/dev/null", O_RDWR | O_CLOEXEC));
    const OwnedDescriptor progress(eventfd(0, EFD_CLOEXEC | EFD_SEMAPHORE));
    if (nullDevice.number() < 0 || progress.number() < 0) return -1;
    const auto advance = [&progress] { eventfd_write(progress.number(), 1); };
    pid_t pid = -1;
    std::thread starter([&] {
        const bool confined = confinement.enter();
        advance();
        if (confined) pid = spawnCommand(command, nullDevice.number());
        advance();
    });
    eventfd_t steps = 0;
    while (eventfd_read(progress.number(), &steps) != 0 && errno == EINTR) {
    }
    std::array<pollfd, 2> waits{pollfd{progress.number(), POLLIN, 0}, pollfd{confinement.gate(), POLLIN, 0}};
    for (;;) {
        if (poll(waits.data(), waits.size(), -1) < 0) continue;
        if ((waits[1].revents & POLLIN) != 0) confinement.judge();
        if (waits[0].revents != 0) break;
    }
    starter.join();
    return pid;
}

} // namespace

struct CommandStart::Kernel {
    const BoundedCommand& command;
    Confinement confinement;
    std::optional<OwnedDescriptor> ended; ///< readable once the program has ended
};

CommandStart::CommandStart(const BoundedCommand& command)
    : kernel_(new Kernel{command, Confinement(programsOf(command)), std::nullopt}) {}

CommandStart::~CommandStart() = default;

pid_t CommandStart::start() {
    const pid_t pid = spawnConfined(kernel_->command, kernel_->confinement);
    if (pid < 0) return pid;
    const rlimit bound{kernel_->command.outputLimit, kernel_->command.outputLimit};
    prlimit(pid, RLIMIT_FSIZE, &bound, nullptr);
    kernel_->ended.emplace(syscall(SYS_pidfd_open, pid, 0));
    return pid;
}

void CommandStart::wait(int milliseconds) {
    Confinement& confinement = kernel_->confinement;
    // Without a descriptor for its end the pause is slept through.
    const int ended = kernel_->ended ? kernel_->ended->number() : -1;
    std::array<pollfd, 2> waits{pollfd{ended, POLLIN, 0}, pollfd{confinement.gate(), POLLIN, 0}};
    if (poll(waits.data(), waits.size(), milliseconds) <= 0) return;
    if ((waits[1].revents & POLLIN) != 0) {
        confinement.judge();
    } else if (waits[0].revents == 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // a gate nobody can come to
    }
}

} // namespace varnet
