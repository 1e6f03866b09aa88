#include "probes/linux/Listeners.h"

#include "probes/linux/DirectoryNumbers.h"
#include "probes/linux/ProcText.h"
#include "probes/linux/SocketDump.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>

namespace varnet::probes {

namespace {

/// @return false when there is no IPv4 table; one without IPv6 is fine
bool readTables(const std::string& process, std::vector<Listener>& listeners) {
    ProcText text;
    const auto four = text.read(AT_FDCWD, (process + "/net/tcp").c_str());
    if (!four) return false;
    parseNetTCP(*four, listeners);
    if (const auto six = text.read(AT_FDCWD, (process + "/net/tcp6").c_str())) parseNetTCP(*six, listeners);
    return true;
}

} // namespace

Listeners::Namespace Listeners::networkNamespace(const std::string& process) {
    struct stat info{};
    if (stat((process + "/ns/net").c_str(), &info) != 0) return std::nullopt;
    return std::pair{static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino)};
}

std::optional<Listeners> Listeners::open(const KernelRoot& root) {
    Listeners result(root);
    const std::string self = root.proc + "/self";
    result.ownNamespace_ = networkNamespace(self);
    const bool live = &root == &KernelRoot::live();
    if (!(live && dumpListeners(result.listeners_))) {
        result.listeners_.clear();
        if (!readTables(self, result.listeners_)) return std::nullopt;
    }
    std::ranges::sort(result.listeners_);
    return result;
}

const std::vector<Listener>* Listeners::tableOf(const std::string& process) const {
    const Namespace ns = networkNamespace(process);
    if (!ns || !ownNamespace_ || *ns == *ownNamespace_) return &listeners_;
    const auto known = std::ranges::find(foreign_, ns, &Foreign::ns);
    if (known != foreign_.end()) return &known->listeners;
    Foreign foreign{ns, {}};
    if (!readTables(process, foreign.listeners)) return nullptr;
    std::ranges::sort(foreign.listeners);
    return &foreign_.emplace_back(std::move(foreign)).listeners;
}

std::int32_t Listeners::ports(std::int32_t pid, std::uint16_t* ports, std::int32_t capacity) const {
    const std::string process = root_.proc + "/" + std::to_string(pid);
    const Descriptor folder(::open((process + "/fd").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::vector<std::int32_t> descriptors;
    if (!folder.valid() || !appendNumbers(folder.get(), descriptors)) return -1;
    const std::vector<Listener>* const listeners = tableOf(process);
    if (listeners == nullptr) return -1;
    if (listeners->empty()) return 0;

    std::int32_t count = 0;
    for (const std::int32_t descriptor : descriptors) {
        std::array<char, 64> link;
        const std::ptrdiff_t length =
            readLink(folder.get(), std::to_string(descriptor).c_str(), link.data(), link.size());
        if (length < 0) continue;
        const auto inode = parseSocketLink({link.data(), static_cast<std::size_t>(length)});
        if (!inode) continue;
        for (const Listener& found : std::ranges::equal_range(*listeners, *inode, {}, &Listener::inode)) {
            if (count >= capacity) return count;
            if (std::find(ports, ports + count, found.port) == ports + count) ports[count++] = found.port;
        }
    }
    return count;
}

} // namespace varnet::probes
