#include "tests/probes/darwin/FakeKernel.h"

#include "probes/darwin/DarwinCalls.h"

#include <libkern/OSThermalNotification.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace varnet::probes {

namespace {

FakeKernel* current = nullptr;

} // namespace

FakeKernel::FakeKernel() {
    current = this;
}

FakeKernel::~FakeKernel() {
    current = nullptr;
}

FakeKernel& FakeKernel::running() {
    return *current;
}

FakeProcess& FakeKernel::addProcess(std::int32_t pid, const std::string& name) {
    listed.push_back(pid);
    FakeProcess& process = processes[pid];
    process.basic.pbi_pid = static_cast<std::uint32_t>(pid);
    process.basic.pbi_ppid = 1;
    process.basic.pbi_uid = getuid();
    process.basic.pbi_start_tvsec = 100;
    process.basic.pbi_start_tvusec = 7;
    name.copy(process.basic.pbi_name, sizeof process.basic.pbi_name);
    return process;
}

FakeProcess* FakeKernel::find(std::int32_t pid) {
    const auto found = processes.find(pid);
    if (found != processes.end()) return &found->second;
    errno = ESRCH;
    return nullptr;
}

} // namespace varnet::probes

using varnet::probes::FakeDescriptor;
using varnet::probes::FakeKernel;
using varnet::probes::FakeKey;
using varnet::probes::FakeProcess;

namespace {

/// As the library does: a refusal is an answer of 0 with an error.
int reply(const void* record, int length, int recordSize, int error, void* buffer, int size) {
    if (error != 0) errno = error;
    if (error != 0 || size < recordSize) return 0;
    std::memcpy(buffer, record, static_cast<std::size_t>(recordSize));
    return length;
}

int descriptorTable(FakeProcess& process, void* buffer, int size) {
    const auto whole = static_cast<int>(process.descriptors.size() * sizeof(proc_fdinfo));
    int answer = buffer == nullptr ? whole : std::min(whole, size);
    for (std::size_t at = 0;
         at < static_cast<std::size_t>(buffer == nullptr ? 0 : answer) / sizeof(proc_fdinfo); ++at) {
        static_cast<proc_fdinfo*>(buffer)[at] = {static_cast<std::int32_t>(at), process.descriptors[at].type};
    }
    if (!process.tableAnswers.empty()) {
        answer = process.tableAnswers.front();
        if (process.tableAnswers.size() > 1) process.tableAnswers.erase(process.tableAnswers.begin());
    }
    if (process.tableError != 0) errno = process.tableError;
    return process.tableError != 0 ? 0 : answer;
}

int namedValue(const std::string& bytes, void* buffer, std::size_t* size) {
    const std::size_t copied = std::min(bytes.size(), *size);
    std::memcpy(buffer, bytes.data(), copied);
    *size = bytes.size();
    return 0;
}

/// The controller's records by their offsets.
constexpr std::size_t recordSize = 80;
constexpr std::size_t sizeAt = 28, typeAt = 32, resultAt = 40, commandAt = 42, dataAt = 48;

std::uint32_t wordAt(const char* record, std::size_t at) {
    std::uint32_t word = 0;
    std::memcpy(&word, record + at, sizeof word);
    return word;
}

std::string letters(std::uint32_t word) {
    return {static_cast<char>(word >> 24U), static_cast<char>(word >> 16U), static_cast<char>(word >> 8U),
            static_cast<char>(word)};
}

std::uint32_t packed(const std::string& text) {
    std::uint32_t word = 0;
    for (const char letter : text)
        word = word << 8U | static_cast<unsigned char>(letter);
    return word;
}

} // namespace

extern "C" {

int proc_listallpids(void* buffer, int size) {
    FakeKernel& kernel = FakeKernel::running();
    const auto count = static_cast<int>(kernel.listed.size());
    if (buffer == nullptr) return kernel.firstAnswer.value_or(count);
    const int room = std::min(count, size / static_cast<int>(sizeof(std::int32_t)));
    std::copy_n(kernel.listed.begin(), room, static_cast<std::int32_t*>(buffer));
    return kernel.secondAnswer.value_or(room);
}

int proc_pidinfo(int pid, int flavor, std::uint64_t, void* buffer, int size) {
    FakeProcess* const process = FakeKernel::running().find(pid);
    if (process == nullptr) return 0;
    switch (flavor) {
    case PROC_PIDTBSDINFO:
        return reply(&process->basic, process->basicReply, sizeof(proc_bsdinfo), process->basicError, buffer,
                     size);
    case PROC_PIDVNODEPATHINFO: {
        proc_vnodepathinfo info{};
        process->cwd.copy(info.pvi_cdir.vip_path, sizeof info.pvi_cdir.vip_path);
        return reply(&info, process->cwdReply, sizeof info, 0, buffer, size);
    }
    case PROC_PIDLISTFDS:
        return descriptorTable(*process, buffer, size);
    default:
        return -1;
    }
}

int proc_pidfdinfo(int pid, int number, int flavor, void* buffer, int size) {
    FakeProcess* const process = FakeKernel::running().find(pid);
    if (process == nullptr || flavor != PROC_PIDFDSOCKETINFO) return 0;
    const FakeDescriptor& descriptor = process->descriptors.at(static_cast<std::size_t>(number));
    socket_fdinfo info{};
    info.psi.soi_kind = descriptor.kind;
    info.psi.soi_proto.pri_tcp.tcpsi_state = descriptor.state;
    info.psi.soi_proto.pri_tcp.tcpsi_ini.insi_lport = descriptor.port;
    return reply(&info, descriptor.reply, sizeof info, 0, buffer, size);
}

int proc_pidpath(int pid, void* buffer, std::uint32_t size) {
    const FakeProcess* const process = FakeKernel::running().find(pid);
    if (process == nullptr || process->path.empty() || size < 1024 || size > 4096) return 0;
    const std::size_t length = process->path.copy(static_cast<char*>(buffer), size - 1);
    return static_cast<int>(length);
}

int proc_pid_rusage(int pid, int flavor, rusage_info_t* buffer) {
    FakeKernel& kernel = FakeKernel::running();
    ++kernel.usageCalls;
    const FakeProcess* const process = kernel.find(pid);
    if (process == nullptr || !process->usage || flavor != RUSAGE_INFO_V2) return -1;
    std::memcpy(buffer, &*process->usage, sizeof *process->usage);
    return 0;
}

// What the probes call by the name of kill.
int varnet_fake_kill(int pid, int signal) {
    FakeKernel& kernel = FakeKernel::running();
    kernel.kills.emplace_back(pid, signal);
    errno = kernel.killAnswer;
    return kernel.killAnswer == 0 ? 0 : -1;
}

int mach_timebase_info(mach_timebase_info_data_t* info) {
    *info = FakeKernel::running().timebase;
    return 0;
}

int sysctl(int* name, unsigned length, void* old, std::size_t* oldSize, void*, std::size_t) {
    const bool known = length == 3 && name[0] == CTL_KERN && name[1] == KERN_PROCARGS2;
    const FakeProcess* const process = known ? FakeKernel::running().find(name[2]) : nullptr;
    return process != nullptr && process->arguments ? namedValue(*process->arguments, old, oldSize) : -1;
}

int sysctlbyname(const char* name, void* old, std::size_t* oldSize, void*, std::size_t) {
    const auto& named = FakeKernel::running().named;
    const auto found = named.find(name);
    return found != named.end() ? namedValue(found->second, old, oldSize) : -1;
}

mach_port_t mach_host_self() {
    ++FakeKernel::running().hostRights;
    return 1;
}

mach_port_t mach_task_self() {
    return 2;
}

kern_return_t mach_port_deallocate(mach_port_t, mach_port_t) {
    --FakeKernel::running().hostRights;
    return 0;
}

kern_return_t host_page_size(mach_port_t, vm_size_t* size) {
    *size = FakeKernel::running().pageSize;
    return 0;
}

kern_return_t host_statistics(mach_port_t, int flavor, host_info_t info, mach_msg_type_number_t* count) {
    const auto& load = FakeKernel::running().load;
    if (!load || flavor != HOST_CPU_LOAD_INFO || *count != HOST_CPU_LOAD_INFO_COUNT) return 5;
    std::memcpy(info, &*load, sizeof *load);
    return 0;
}

kern_return_t host_statistics64(mach_port_t, int flavor, host_info_t info, mach_msg_type_number_t* count) {
    FakeKernel& kernel = FakeKernel::running();
    kernel.wordsAsked = *count;
    if (!kernel.pages || flavor != HOST_VM_INFO64) return 5;
    // This kernel's record has grown: it fills all that it is asked for.
    std::fill_n(info, *count, -1);
    std::memcpy(info, &*kernel.pages, sizeof *kernel.pages);
    return 0;
}

void* IOServiceMatching(const char* name) {
    static char matched;
    return std::strcmp(name, "AppleSMC") == 0 ? &matched : nullptr;
}

mach_port_t IOServiceGetMatchingService(mach_port_t, const void* matching) {
    FakeKernel& kernel = FakeKernel::running();
    if (matching == nullptr || !kernel.hasController) return MACH_PORT_NULL;
    ++kernel.services;
    return 3;
}

kern_return_t IOServiceOpen(mach_port_t, mach_port_t, std::uint32_t, mach_port_t* connection) {
    FakeKernel& kernel = FakeKernel::running();
    if (!kernel.controllerOpens) return 5;
    ++kernel.connections;
    *connection = 4;
    return 0;
}

kern_return_t IOServiceClose(mach_port_t) {
    --FakeKernel::running().connections;
    return 0;
}

kern_return_t IOObjectRelease(mach_port_t) {
    --FakeKernel::running().services;
    return 0;
}

kern_return_t IOConnectCallStructMethod(mach_port_t connection, std::uint32_t selector, const void* input,
                                        std::size_t inputSize, void* output, std::size_t* outputSize) {
    if (connection != 4 || selector != 2 || inputSize != recordSize || *outputSize != recordSize) return 5;
    const char* const request = static_cast<const char*>(input);
    char* const answer = static_cast<char*>(output);
    const auto& keys = FakeKernel::running().keys;
    const auto found = keys.find(letters(wordAt(request, 0)));
    if (found == keys.end()) return 5;
    const FakeKey& key = found->second;
    if (request[commandAt] == 9) {
        const std::uint32_t type = packed(key.type);
        std::memcpy(answer + sizeAt, &key.size, sizeof key.size);
        std::memcpy(answer + typeAt, &type, sizeof type);
        answer[resultAt] = static_cast<char>(key.informationResult);
    } else if (request[commandAt] == 5 && wordAt(request, sizeAt) == key.size) {
        key.data.copy(answer + dataAt, 32);
        answer[resultAt] = static_cast<char>(key.valueResult);
    } else {
        return 5;
    }
    return 0;
}

const char* const kOSThermalNotificationPressureLevelName = "com.apple.system.thermalpressurelevel";

std::uint32_t notify_register_check(const char*, int* token) {
    FakeKernel& kernel = FakeKernel::running();
    if (!kernel.pressure) return 1;
    ++kernel.subscriptions;
    *token = 9;
    return 0;
}

std::uint32_t notify_get_state(int token, std::uint64_t* state) {
    const auto& pressure = FakeKernel::running().pressure;
    if (token != 9 || !pressure) return 1;
    *state = *pressure;
    return 0;
}

std::uint32_t notify_cancel(int) {
    --FakeKernel::running().subscriptions;
    return 0;
}
}
