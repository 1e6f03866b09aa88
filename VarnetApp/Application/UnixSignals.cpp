#include "VarnetApp/Application/UnixSignals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace varnet {

namespace {

constexpr std::array<int, 3> endings{SIGTERM, SIGINT, SIGHUP};

volatile int writeEnd = -1;

extern "C" void onSignal(int) {
    const int saved = errno;
    const char byte = 0;
    // A full pipe already holds what is to be told.
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    errno = saved;
}

} // namespace

UnixSignals::UnixSignals(std::function<void()> terminate, QObject* parent) : QObject(parent) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    readEnd_ = ends[0];
    writeEnd = ends[1];
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this, terminate = std::move(terminate)] {
        char byte = 0;
        while (read(readEnd_, &byte, 1) > 0) {
        }
        terminate();
    });
    struct sigaction action{};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : endings)
        sigaction(signal, &action, nullptr);
}

UnixSignals::~UnixSignals() {
    if (readEnd_ < 0) return;
    for (const int signal : endings)
        std::signal(signal, SIG_DFL);
    notifier_.reset();
    close(readEnd_);
    close(writeEnd);
    writeEnd = -1;
}

} // namespace varnet
