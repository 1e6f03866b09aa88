#include "tests/probes/Churn.h"

#include "tests/probes/Child.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <random>
#include <string>

namespace varnet::probes {

namespace {

using Random = std::mt19937;

void nap(Random& random, unsigned least, unsigned most) {
    usleep(std::uniform_int_distribution<unsigned>(least, most)(random) * 1000);
}

void setName(const std::string& name) {
    prctl(PR_SET_NAME, name.c_str());
}

void run(const std::filesystem::path& image, const char* milliseconds) {
    execl(image.c_str(), image.c_str(), milliseconds, nullptr);
}

void burn() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(3);
    std::vector<char> held(std::size_t{1} << 20U);
    for (std::size_t at = 0; std::chrono::steady_clock::now() < end; at = (at + 4096) % held.size())
        held[at] = 1;
    // It keeps what it has taken: memory only grows.
    new std::vector<char>(std::move(held));
}

/// One short life.
void live(Random& random, int number, const std::filesystem::path& images) {
    const std::string mark = std::to_string(number % 100'000);
    switch (number % 8) {
    case 0:
        break;
    case 1:
        for (const char* const prefix : {"first-", "second-", "third-"}) {
            setName(prefix + mark);
            nap(random, 20, 150);
        }
        break;
    case 2:
        nap(random, 20, 400);
        run(images / "other", "600");
        break;
    case 3: // another image under the same name
        setName("twin");
        nap(random, 20, 400);
        run(images / "twin", "600");
        break;
    case 4:
        nap(random, 20, 150);
        if (setuid(static_cast<uid_t>(60'000 + number % 5000)) != 0) break; // only the superuser may
        nap(random, 20, 150);
        break;
    case 5:
        if (fork() == 0) {
            setName("orphan-" + mark);
            nap(random, 200, 400);
            _exit(0);
        }
        nap(random, 20, 150);
        break;
    case 6:
        for (int i = 0; i < 4; ++i) {
            burn();
            nap(random, 0, 30);
        }
        break;
    default:
        nap(random, 100, 400); // sleeps until its end
        break;
    }
}

[[noreturn]] void startForEver(unsigned seed, const std::filesystem::path& images) {
    Random random(seed);
    signal(SIGCHLD, SIG_DFL);
    for (int number = static_cast<int>(seed) * 1000;; ++number) {
        if (fork() == 0) {
            live(random, number, images);
            _exit(0);
        }
        nap(random, 3, 10);
        // Now and then, so that some wait a while to be collected.
        while (number % 8 == 0 && waitpid(-1, nullptr, WNOHANG) > 0) {
        }
    }
}

} // namespace

Churn::Churn(const std::filesystem::path& images) {
    for (const char* const name : {"other", "twin"})
        std::filesystem::copy_file(VARNET_NAPPER, images / name);
    std::filesystem::permissions(images, std::filesystem::perms(0755)); // for other users as well
    // Takes in what loses its parent, and collects it at once.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    signal(SIGCHLD, SIG_IGN);
    const pid_t self = getpid();
    for (const unsigned seed : {1U, 2U}) {
        const pid_t starter = fork();
        if (starter == 0) {
            dieWithParent(self);
            if (seed == 2) prctl(PR_SET_CHILD_SUBREAPER, 1);
            startForEver(seed, images);
        }
        starters_.push_back(starter);
    }
}

Churn::~Churn() {
    for (const pid_t starter : starters_) {
        if (starter > 0) kill(starter, SIGKILL);
    }
    while (waitpid(-1, nullptr, 0) > 0 || errno == EINTR) {
    }
    signal(SIGCHLD, SIG_DFL);
    prctl(PR_SET_CHILD_SUBREAPER, 0);
}

} // namespace varnet::probes
