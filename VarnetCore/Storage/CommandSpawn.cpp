#include "VarnetCore/Storage/CommandSpawn.h"

#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace varnet {

namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    list.reserve(texts.size() + 1);
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

/// Sees to it that the program gets no descriptor beyond the first three. @return flags to start it with
unsigned closeOthers([[maybe_unused]] posix_spawn_file_actions_t& files) {
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
    return POSIX_SPAWN_CLOEXEC_DEFAULT;
#else
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    return 0;
#endif
}

} // namespace

pid_t spawnCommand(const BoundedCommand& command, int nullDevice) {
    std::vector<std::string> words{command.program};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    std::vector<std::string> variables = command.environment;
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    if (posix_spawn_file_actions_init(&files) != 0) return -1;
    if (posix_spawnattr_init(&attributes) != 0) {
        posix_spawn_file_actions_destroy(&files);
        return -1;
    }
    posix_spawn_file_actions_adddup2(&files, nullDevice, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, command.output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, nullDevice, STDERR_FILENO);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    constexpr unsigned flags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    posix_spawnattr_setflags(&attributes, static_cast<short>(flags | closeOthers(files)));
    pid_t pid = -1;
    if (posix_spawn(&pid, command.program.c_str(), &files, &attributes, pointers(words).data(),
                    pointers(variables).data()) != 0) {
        pid = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return pid;
}

} // namespace varnet
