#include "probes/vn_probes.h"

#include "probes/linux/CheckedSignal.h"
#include "probes/linux/DiskWalker.h"
#include "probes/linux/FanReadings.h"
#include "probes/linux/KernelRoot.h"
#include "probes/linux/Listeners.h"
#include "probes/linux/ProcessList.h"
#include "probes/linux/SharedProcessTable.h"
#include "probes/linux/SystemReadings.h"
#include "probes/linux/ThermalReadings.h"

#include <time.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>

// The public functions: the rooms behind them, bound to the running kernel. Only memory can fail them by an
// exception, and none leaves this file.

using varnet::probes::KernelRoot;
using varnet::probes::ListKind;
using varnet::probes::SignalCalls;

namespace {

template <class Function>
auto guarded(Function function, decltype(function()) failure) noexcept {
    try {
        return function();
    } catch (...) {
        return failure;
    }
}

} // namespace

struct VNTable {
    std::shared_ptr<varnet::probes::SharedProcessTable> shared = varnet::probes::SharedProcessTable::open();
    varnet::probes::TableCopy copy;
};

struct VNListeners {
    varnet::probes::Listeners listeners;
};

struct VNSensors {
    std::string sys;
    varnet::probes::ThermalReadings thermal{sys};
};

struct VNDiskWalk {
    varnet::probes::DiskWalker walker;
};

void vn_free(void* list) {
    std::free(list);
}

int32_t vn_identity(int32_t pid, uint64_t* start, uint32_t* uid) {
    return guarded([&] { return varnet::probes::identity(KernelRoot::live(), pid, start, uid); }, -1);
}

int32_t vn_processes(VNProcessEntry** list) {
    *list = nullptr;
    return guarded([&] { return varnet::probes::collectProcesses(KernelRoot::live(), ListKind::full, list); },
                   -1);
}

int32_t vn_process_graph(VNProcessEntry** list) {
    *list = nullptr;
    return guarded(
        [&] { return varnet::probes::collectProcesses(KernelRoot::live(), ListKind::graph, list); }, -1);
}

int32_t vn_path(int32_t pid, char* buffer, size_t size) {
    return guarded([&] { return varnet::probes::path(KernelRoot::live(), pid, buffer, size); }, -1);
}

int32_t vn_cwd(int32_t pid, char* buffer, size_t size) {
    return guarded([&] { return varnet::probes::cwd(KernelRoot::live(), pid, buffer, size); }, -1);
}

int32_t vn_arguments(int32_t pid, char* buffer, size_t size) {
    return guarded([&] { return varnet::probes::arguments(KernelRoot::live(), pid, buffer, size); }, -1);
}

int32_t vn_ports(int32_t pid, uint16_t* ports, int32_t capacity) {
    return guarded(
        [&] {
            const auto listeners = varnet::probes::Listeners::open(KernelRoot::live());
            return listeners ? listeners->ports(pid, ports, capacity) : -1;
        },
        -1);
}

int32_t vn_cpu_ticks(VNCPUTicks* ticks) {
    return guarded([&] { return varnet::probes::cpuTicks(KernelRoot::live(), ticks); }, -1);
}

void vn_system_memory(VNSystemMemory* memory) {
    *memory = {};
    guarded(
        [&] {
            varnet::probes::systemMemory(KernelRoot::live(), memory);
            return 0;
        },
        -1);
}

int64_t vn_boot_time(void) {
    return guarded([] { return static_cast<int64_t>(KernelRoot::live().bootSeconds); }, 0);
}

int32_t vn_model(char* buffer, size_t size) {
    return guarded([&] { return varnet::probes::model(KernelRoot::live(), buffer, size); }, -1);
}

int32_t vn_exists(int32_t pid) {
    return guarded([&] { return varnet::probes::exists(KernelRoot::live(), SignalCalls::live(), pid); }, -1);
}

int32_t vn_signal_checked(int32_t pid, uint64_t start, uint32_t uid, int32_t signal) {
    return guarded(
        [&] {
            return varnet::probes::signalChecked(KernelRoot::live(), SignalCalls::live(), pid, start, uid,
                                                 signal);
        },
        ENOMEM);
}

VNTable* vn_table_open(void) {
    return guarded([] { return new VNTable; }, static_cast<VNTable*>(nullptr));
}

int32_t vn_table_read(VNTable* table, int32_t full, const VNTableEntry** entries) {
    *entries = nullptr;
    const ListKind kind = full != 0 ? ListKind::full : ListKind::graph;
    return guarded(
        [&] {
            const int32_t count = table->shared->read(kind, table->copy);
            if (count >= 0) *entries = table->copy.entries.data();
            return count;
        },
        -1);
}

void vn_table_close(VNTable* table) {
    delete table;
}

VNListeners* vn_listeners_open(void) {
    return guarded(
        []() -> VNListeners* {
            auto listeners = varnet::probes::Listeners::open(KernelRoot::live());
            return listeners ? new VNListeners{std::move(*listeners)} : nullptr;
        },
        static_cast<VNListeners*>(nullptr));
}

int32_t vn_listeners_ports(const VNListeners* listeners, int32_t pid, uint16_t* ports, int32_t capacity) {
    return guarded([&] { return listeners->listeners.ports(pid, ports, capacity); }, -1);
}

void vn_listeners_close(VNListeners* listeners) {
    delete listeners;
}

int32_t vn_fans(VNFan* fans, int32_t capacity) {
    return guarded([&] { return varnet::probes::fans(KernelRoot::live().sys, fans, capacity); }, -1);
}

VNSensors* vn_sensors_open(const char* sys) {
    return guarded([&] { return new VNSensors{.sys = sys != nullptr ? sys : KernelRoot::live().sys}; },
                   static_cast<VNSensors*>(nullptr));
}

int32_t vn_sensors_fans(VNSensors* sensors, VNFan* fans, int32_t capacity) {
    return guarded([&] { return varnet::probes::fans(sensors->sys, fans, capacity); }, -1);
}

int32_t vn_sensors_thermal_state(VNSensors* sensors) {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    const double seconds = static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    return guarded([&] { return sensors->thermal.state(seconds); }, 0);
}

void vn_sensors_close(VNSensors* sensors) {
    delete sensors;
}

namespace {

VNDiskWalk* openWalk(const char* path, bool oneVolume) noexcept {
    if (path == nullptr || *path == '\0') return nullptr;
    return guarded([&] { return new VNDiskWalk{varnet::probes::DiskWalker(path, oneVolume)}; }, nullptr);
}

} // namespace

VNDiskWalk* vn_disk_open(const char* path) {
    return openWalk(path, false);
}

VNDiskWalk* vn_disk_open_volume(const char* path) {
    return openWalk(path, true);
}

int32_t vn_disk_next(VNDiskWalk* walk, VNDiskEntry* entry) {
    if (walk == nullptr || entry == nullptr) return -1;
    return guarded([&] { return walk->walker.next(*entry); }, -1);
}

void vn_disk_skip(VNDiskWalk* walk) {
    if (walk != nullptr) walk->walker.skip();
}

void vn_disk_close(VNDiskWalk* walk) {
    delete walk;
}
