#include "VarnetCore/Storage/linux/Confinement.h"

#include <fcntl.h>
#include <link.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/auxv.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

namespace varnet {

namespace {

// Landlock as the kernel numbers it: the C library's headers may be older than the kernel.
constexpr std::uint64_t executeFile = 1U << 0U;
constexpr std::uint64_t writeFile = 1U << 1U;
constexpr std::uint64_t readFile = 1U << 2U;
constexpr std::uint64_t readFolder = 1U << 3U;
constexpr std::uint64_t truncateFile = 1U << 14U;
constexpr std::uint64_t allTcp = 0x3;
constexpr std::uint64_t allScopes = 0x3; ///< abstract sockets and signals
constexpr std::uint32_t askVersion = 1;
constexpr int ruleBeneath = 1;

struct Ruleset {
    std::uint64_t files;
    std::uint64_t network; ///< from version 4
    std::uint64_t scopes;  ///< from version 6
};

struct __attribute__((packed)) BeneathRule {
    std::uint64_t allowed;
    std::int32_t parent;
};

/// Every right over files that a version knows, reading left out.
std::uint64_t fileRights(long version) {
    std::uint64_t rights = (1U << 13U) - 1; // up to making symbolic links
    if (version >= 2) rights |= 1U << 13U;  // moving between folders
    if (version >= 3) rights |= truncateFile;
    if (version >= 5) rights |= 1U << 15U; // commands to devices
    return rights & ~(readFile | readFolder);
}

class Descriptor {
public:
    explicit Descriptor(long number) : number_(static_cast<int>(number)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    int number() const noexcept { return number_; }

private:
    const int number_;
};

/// The loader that started this program, which is the system's for any other; empty without one.
std::string systemLoader() {
    const auto* header = std::bit_cast<const ElfW(Phdr)*>(getauxval(AT_PHDR));
    const unsigned long count = getauxval(AT_PHNUM);
    std::uintptr_t base = 0;
    const char* loader = nullptr;
    for (unsigned long at = 0; header != nullptr && at < count; ++at) {
        if (header[at].p_type == PT_PHDR)
            base = reinterpret_cast<std::uintptr_t>(header) - header[at].p_vaddr;
    }
    for (unsigned long at = 0; header != nullptr && at < count; ++at) {
        if (header[at].p_type == PT_INTERP) loader = std::bit_cast<const char*>(base + header[at].p_vaddr);
    }
    return loader != nullptr ? loader : "";
}

/// Allows something below a path. A path that is not there needs no rule.
bool allow(int ruleset, const std::string& path, std::uint64_t rights) {
    const Descriptor file(open(path.c_str(), O_PATH | O_CLOEXEC));
    if (file.number() < 0) return true;
    const BeneathRule rule{rights, file.number()};
    return syscall(SYS_landlock_add_rule, ruleset, ruleBeneath, &rule, 0) == 0;
}

#if defined(__x86_64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_AARCH64;
#elif defined(__riscv) && __riscv_xlen == 64
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_RISCV64;
#else
constexpr std::uint32_t ownArchitecture = 0; ///< no filter was tried there
#endif

constexpr std::uint32_t refused = SECCOMP_RET_ERRNO | EACCES;
constexpr std::uint32_t otherNumbering = 0x40000000; ///< the 32-bit pointers' calls of x86-64

sock_filter load(std::size_t offset) {
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}
sock_filter ifEqual(std::uint32_t value, std::uint8_t yes, std::uint8_t no) {
    return BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, yes, no);
}
sock_filter answer(std::uint32_t value) {
    return BPF_STMT(BPF_RET | BPF_K, value);
}

/// Whether a judged start can be let through, which came after judging itself. A kernel that cannot would
/// leave every program waiting.
bool canLetThrough() {
    utsname system{};
    if (uname(&system) != 0) return false;
    const std::string_view release(system.release);
    int major = 0;
    int minor = 0;
    const auto [dot, error] = std::from_chars(release.data(), release.data() + release.size(), major);
    if (error != std::errc{} || dot == release.data() + release.size()) return false;
    std::from_chars(dot + 1, release.data() + release.size(), minor);
    return major > 5 || (major == 5 && minor >= 5);
}

/// Confines the thread's system calls. @return descriptor of the gate; -1 where the kernel offers none
int enterFilter() {
    if (ownArchitecture == 0 || !canLetThrough()) return -1;
    std::array program{
        load(offsetof(seccomp_data, arch)),
        ifEqual(ownArchitecture, 1, 0),
        answer(refused),
        load(offsetof(seccomp_data, nr)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, otherNumbering, 5, 0),
        ifEqual(SYS_execve, 5, 0),
        ifEqual(SYS_execveat, 3, 0),
        ifEqual(SYS_socket, 0, 4),
        load(offsetof(seccomp_data, args)), // the low half: all these machines are little-endian
        ifEqual(AF_UNIX, 2, 0),
        answer(refused),
        answer(SECCOMP_RET_USER_NOTIF),
        answer(SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return static_cast<int>(
        syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &filter));
}

} // namespace

Confinement::Confinement(std::vector<std::string> programs) : programs_(std::move(programs)) {}

Confinement::~Confinement() {
    if (gate_ >= 0) close(gate_);
}

bool Confinement::enter() {
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !restrictFiles()) return false;
    gate_ = enterFilter();
    return true;
}

bool Confinement::restrictFiles() const {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, askVersion);
    if (version < 1) return true; // this kernel has none, or it is switched off
    Ruleset rules{fileRights(version), 0, 0};
    std::size_t size = offsetof(Ruleset, network);
    if (version >= 4) {
        rules.network = allTcp;
        size = offsetof(Ruleset, scopes);
    }
    if (version >= 6) {
        rules.scopes = allScopes;
        size = sizeof(Ruleset);
    }
    const Descriptor ruleset(syscall(SYS_landlock_create_ruleset, &rules, size, 0));
    if (ruleset.number() < 0) return false;
    std::vector<std::string> executables = programs_;
    executables.push_back(systemLoader());
    const bool allowed =
        std::ranges::all_of(executables,
                            [&](const auto& path) { return allow(ruleset.number(), path, executeFile); }) &&
        allow(ruleset.number(), "/dev/null", writeFile | (version >= 3 ? truncateFile : 0));
    return allowed && syscall(SYS_landlock_restrict_self, ruleset.number(), 0) == 0;
}

/// Whether the name that a process wants to execute is one of those allowed. Reads it while the process
/// waits.
bool Confinement::mayExecute(pid_t pid, unsigned long long name) const {
    std::array<char, PATH_MAX> text{};
    const auto longest = std::ranges::max_element(programs_, {}, &std::string::size);
    if (longest == programs_.end()) return false;
    // The name may end right before memory that cannot be read: page by page, no more than can matter.
    const std::size_t wanted = std::min(longest->size() + 1, text.size());
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::size_t got = 0;
    while (got < wanted) {
        const auto at = static_cast<std::uintptr_t>(name) + got;
        const std::size_t piece = std::min(wanted - got, page - at % page);
        const iovec local{text.data() + got, piece};
        const iovec remote{std::bit_cast<void*>(at), piece};
        if (process_vm_readv(pid, &local, 1, &remote, 1, 0) != static_cast<ssize_t>(piece)) break;
        got += piece;
    }
    const auto end = std::find(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(got), '\0');
    if (end == text.begin() + static_cast<std::ptrdiff_t>(got)) return false;
    return std::ranges::find(programs_, std::string_view(text.begin(), end)) != programs_.end();
}

void Confinement::judge() {
    seccomp_notif asked{};
    if (ioctl(gate_, SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0) return;
    const bool ours = std::exchange(first_, false);
    seccomp_notif_resp reply{};
    reply.id = asked.id;
    const bool allowed = ours || mayExecute(static_cast<pid_t>(asked.pid), asked.data.args[0]);
    if (allowed) {
        reply.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    } else {
        reply.error = -EACCES;
    }
    // A process that has ended meanwhile leaves nobody to be answered.
    if (ioctl(gate_, SECCOMP_IOCTL_NOTIF_SEND, &reply) == 0 || errno != EINVAL) return;
    // Nobody may be left waiting, whatever the kernel did not understand.
    reply.flags = 0;
    reply.error = -EACCES;
    ioctl(gate_, SECCOMP_IOCTL_NOTIF_SEND, &reply);
}

} // namespace varnet
