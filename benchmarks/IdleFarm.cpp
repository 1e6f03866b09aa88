#include "benchmarks/IdleFarm.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace varnet {

IdleFarm::IdleFarm(int count) {
    const pid_t farmer = getpid();
    for (int i = 0; i < count; ++i) {
        const pid_t child = fork();
        if (child < 0) break;
        if (child == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (getppid() != farmer) _exit(0);
            for (;;)
                pause();
        }
        children_.push_back(child);
    }
}

IdleFarm::~IdleFarm() {
    for (const pid_t child : children_)
        kill(child, SIGKILL);
    for (const pid_t child : children_)
        waitpid(child, nullptr, 0);
}

} // namespace varnet
