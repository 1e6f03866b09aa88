#include "probes/linux/SharedProcessTable.h"

#include "probes/linux/KernelRoot.h"

#include <time.h>

#include <cstddef>
#include <cstring>
#include <span>

namespace varnet::probes {

namespace {

double monotonicSeconds() noexcept {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace

SharedProcessTable::SharedProcessTable() : table_(KernelRoot::live()) {}

std::shared_ptr<SharedProcessTable> SharedProcessTable::open() {
    static std::mutex mutex;
    static std::weak_ptr<SharedProcessTable> current;
    const std::scoped_lock lock(mutex);
    auto table = current.lock();
    if (!table) current = table = std::make_shared<SharedProcessTable>();
    return table;
}

std::int32_t SharedProcessTable::read(ListKind kind, TableCopy& copy) {
    const std::scoped_lock lock(mutex_);
    copy.entries.clear();
    copy.texts.clear();
    const VNTableEntry* entries = nullptr;
    const std::int32_t count = table_.read(kind, monotonicSeconds(), &entries);
    if (count < 0) return count;

    const std::span<const VNTableEntry> all(entries, static_cast<std::size_t>(count));
    copy.entries.assign(all.begin(), all.end());
    std::size_t size = 0;
    for (const VNTableEntry& entry : all)
        size += std::strlen(entry.name) + std::strlen(entry.path) + 2;
    copy.texts.resize(size);
    char* at = copy.texts.data();
    const auto keep = [&at](const char*& text) {
        const std::size_t length = std::strlen(text) + 1;
        std::memcpy(at, text, length);
        text = at;
        at += length;
    };
    for (VNTableEntry& entry : copy.entries) {
        keep(entry.name);
        keep(entry.path);
    }
    return count;
}

} // namespace varnet::probes
