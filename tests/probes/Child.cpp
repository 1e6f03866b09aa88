#include "tests/probes/Child.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>

namespace varnet::probes {

void dieWithParent(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
}

bool eventually(const std::function<bool()>& condition) {
    for (int i = 0; i < 20'000; ++i) {
        if (condition()) return true;
        usleep(1000);
    }
    return false;
}

char stateOf(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::size_t close = text.rfind(')');
    return close == std::string::npos || close + 2 >= text.size() ? '?' : text[close + 2];
}

Child::Child(const std::function<void(SharedWords&)>& body) {
    void* const memory =
        mmap(nullptr, sizeof(SharedWords), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("no shared memory");
    shared_ = new (memory) SharedWords{};
    const pid_t parent = getpid();
    pid_ = fork();
    if (pid_ < 0) throw std::runtime_error("no child");
    if (pid_ == 0) {
        dieWithParent(parent);
        if (body) body(*shared_);
        shared_->ready = true;
        for (;;)
            pause();
    }
    // Asleep, so that it holds still while it is measured.
    const auto settled = [&] {
        const char state = stateOf(pid_);
        return state == 'Z' || (state == 'S' && shared_->ready);
    };
    if (!eventually(settled) || !shared_->ready) {
        end();
        throw std::runtime_error("the child did not get ready");
    }
}

Child::~Child() {
    if (!collected_) end();
    munmap(shared_, sizeof(SharedWords));
}

void Child::leaveUncollected() {
    kill(pid_, SIGKILL);
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
}

int Child::collect() {
    int status = 0;
    waitpid(pid_, &status, 0);
    collected_ = true;
    return status;
}

void Child::end() {
    kill(pid_, SIGKILL);
    collect();
}

} // namespace varnet::probes
