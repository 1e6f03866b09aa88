#include "tests/probes/FixtureKernel.h"

#include "probes/linux/ProcText.h"

#include <fcntl.h>
#include <unistd.h>

#include <sstream>
#include <stdexcept>

namespace varnet::probes {

namespace {

std::string statText(const FixtureProcess& process) {
    std::ostringstream text;
    text << process.pid << " (" << process.name << ") " << process.state << ' ' << process.parent
         << " 1 1 0 -1 " << process.kernelFlags << " 10 0 0 0 " << process.userTicks << ' '
         << process.systemTicks << " 0 0 20 0 " << process.threads << " 0 " << process.startTicks
         << " 8192000 250 18446744073709551615 1 1 0 0 0 0 0 0 0 0 0 0 17 1 0 0 0 0 0\n";
    return text.str();
}

std::string statusText(const FixtureProcess& process) {
    std::ostringstream text;
    text << "Name:\tworker\nTgid:\t" << process.pid << "\nPid:\t" << process.pid << "\nUid:\t4242\t"
         << process.uid << '\t' << process.uid << '\t' << process.uid << '\n';
    if (process.anonymousKilobytes) {
        text << "VmRSS:\t" << *process.anonymousKilobytes + 600 << " kB\nRssAnon:\t"
             << *process.anonymousKilobytes << " kB\nRssFile:\t600 kB\nRssShmem:\t0 kB\nVmSwap:\t"
             << process.swappedKilobytes << " kB\n";
    }
    text << "voluntary_ctxt_switches:\t" << process.wakeups << "\nnonvoluntary_ctxt_switches:\t3\n";
    return text.str();
}

std::string statmText(const FixtureProcess& process) {
    std::ostringstream text;
    text << "2000 " << (process.anonymousKilobytes.value_or(0) + 600) / 4 << " 150 10 0 300 0\n";
    return text.str();
}

} // namespace

std::map<std::int32_t, std::uint64_t> FixtureKernel::clocks;

FixtureKernel::FixtureKernel() {
    root_.proc = folder_.path() / "proc";
    root_.sys = folder_.path() / "sys";
    root_.cpuClock = clockOf;
    root_.bootSeconds = bootSeconds;
    std::filesystem::create_directories(root_.proc);
    std::filesystem::create_directories(root_.sys);
    clocks.clear();
}

FixtureKernel::~FixtureKernel() {
    clocks.clear();
}

std::filesystem::path FixtureKernel::processFolder(std::int32_t pid) const {
    return std::filesystem::path(root_.proc) / std::to_string(pid);
}

void FixtureKernel::put(const FixtureProcess& process) {
    const std::string folder = "proc/" + std::to_string(process.pid);
    write(folder + "/stat", statText(process));
    putMemory(process);
    link(folder + "/exe", process.exe);
    clocks.try_emplace(process.pid, 1'000'000);
}

void FixtureKernel::putMemory(const FixtureProcess& process) const {
    const std::string folder = "proc/" + std::to_string(process.pid);
    write(folder + "/status", statusText(process));
    write(folder + "/statm", statmText(process));
}

void FixtureKernel::run(const FixtureProcess& process) {
    put(process);
    clocks[process.pid] += 1'000;
}

void FixtureKernel::remove(std::int32_t pid) {
    std::filesystem::remove_all(processFolder(pid));
    clocks.erase(pid);
}

void FixtureKernel::write(const std::string& name, std::string_view text) const {
    const std::filesystem::path path = folder_.path() / name;
    const auto openFile = [&] {
        return Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    };
    Descriptor file = openFile();
    if (!file.valid()) {
        std::filesystem::create_directories(path.parent_path());
        file = openFile();
    }
    // Over what was there: files that are emptied and written anew are slow on some file systems.
    const auto size = static_cast<ssize_t>(text.size());
    if (::write(file.get(), text.data(), text.size()) != size || ftruncate(file.get(), size) != 0) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void FixtureKernel::link(const std::string& name, const std::string& target) const {
    const std::filesystem::path path = folder_.path() / name;
    std::filesystem::create_directories(path.parent_path());
    std::filesystem::remove(path);
    std::filesystem::create_symlink(target, path);
}

std::optional<std::uint64_t> FixtureKernel::clockOf(std::int32_t pid) {
    const auto found = clocks.find(pid);
    return found == clocks.end() ? std::nullopt : std::optional(found->second);
}

} // namespace varnet::probes
