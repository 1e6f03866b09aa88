// What a hostile repository would like to be run, and what a Git that misbehaves would do. Its last argument
// says which; called in any other way it leaves a trace named "canary" where it stands.

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void sleepForLong() {
    for (int second = 0; second < 20; ++second)
        sleep(1);
}

/// 0 when it was refused, 1 when it worked.
int tryAll(const std::string& folder) {
    int worked = 0;
    const auto report = [&worked](const char* what, bool success) {
        if (success) std::printf("%s\n", what);
        if (success) worked = 1;
    };
    const std::string file = folder + "/file";
    report("created a file", open((folder + "/new").c_str(), O_CREAT | O_WRONLY, 0600) >= 0);
    report("wrote a file", open(file.c_str(), O_WRONLY) >= 0);
    report("truncated a file", truncate(file.c_str(), 0) == 0);
    report("removed a file", unlink(file.c_str()) == 0);
    report("made a folder", mkdir((folder + "/folder").c_str(), 0700) == 0);
    report("made a link", symlink("/", (folder + "/link").c_str()) == 0);
    report("renamed a file", rename(file.c_str(), (folder + "/other").c_str()) == 0);
    report("opened a network socket", socket(AF_INET, SOCK_STREAM, 0) >= 0);
    report("opened a datagram socket", socket(AF_INET6, SOCK_DGRAM, 0) >= 0);
    report("signalled its parent", kill(getppid(), 0) == 0);
    report("has a terminal", open("/dev/tty", O_RDWR) >= 0);
    if (fork() == 0) {
        execl("/bin/sh", "sh", "-c", "echo ran a shell", nullptr);
        execl("/lib64/ld-linux-x86-64.so.2", "ld.so", "/bin/echo", "ran the loader", nullptr);
        const int program = open("/bin/echo", O_RDONLY);
        char* const words[]{const_cast<char*>("echo"), const_cast<char*>("ran a descriptor"), nullptr};
        fexecve(program, words, environ);
        _exit(0);
    }
    sleep(1);
    return worked;
}

} // namespace

int main(int count, char** values) {
    const std::string what = values[count - 1];
    if (what == "arguments") {
        for (int at = 1; at < count; ++at)
            std::printf("%s\n", values[at]);
        for (char** variable = environ; *variable != nullptr; ++variable)
            std::printf("%s\n", *variable);
        char byte = 0;
        std::printf("input %zd\n", read(STDIN_FILENO, &byte, 1));
    } else if (what == "stay") {
        signal(SIGTERM, SIG_IGN);
        sleepForLong();
    } else if (what == "leave a child") {
        if (fork() != 0) return 0;
        signal(SIGTERM, SIG_IGN);
        // Open for as long as the child lives: the test waits for its other end to close.
        if (open((std::string(values[count - 2]) + "/pipe").c_str(), O_RDONLY) >= 0) sleepForLong();
    } else if (what.starts_with("write ")) {
        const std::string bytes(static_cast<std::size_t>(std::atol(what.c_str() + 6)), 'x');
        std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    } else if (what == "try all") {
        return tryAll(values[count - 2]);
    } else if (what == "die") {
        raise(SIGABRT);
    } else {
        const int canary = open("canary", O_CREAT | O_WRONLY, 0600);
        if (canary < 0) sleepForLong();
    }
    return 0;
}
