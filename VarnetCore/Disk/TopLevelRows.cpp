#include "VarnetCore/Disk/TopLevelRows.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace varnet {

void TopLevelRows::startRoot(std::string_view path, bool systemOnly) {
    root_ = path;
    systemOnly_ = systemOnly;
    current_ = nullptr;
}

void TopLevelRows::add(std::string_view path, bool directory, std::uint64_t bytes, bool unreadable) {
    const std::string_view relative = path.substr(root_ == "/" ? 1 : root_.size() + 1);
    const std::string_view first = relative.substr(0, relative.find('/'));
    // A walk stays below one component for long.
    if (current_ == nullptr || first != currentFirst_) {
        current_ = &rowOf(first, directory);
        currentFirst_ = first;
    }
    if (__builtin_add_overflow(current_->bytes, bytes, &current_->bytes))
        current_->bytes = std::numeric_limits<std::uint64_t>::max();
    current_->partial = current_->partial || unreadable;
}

DiskUsageEntry& TopLevelRows::rowOf(std::string_view first, bool directory) {
    std::string key = "/";
    std::string name = "macOS";
    if (systemOnly_) {
        directory = true;
    } else {
        key = root_ == "/" ? root_ : root_ + "/";
        key += first;
        name = first;
    }
    auto row = rows_.find(key);
    if (row == rows_.end() && rows_.size() >= mostDiskRows) {
        key = otherFilesPath;
        name = "More items";
        directory = false;
        row = rows_.find(key);
    }
    if (row == rows_.end()) {
        DiskUsageEntry entry{key, std::move(name), directory, 0, false};
        row = rows_.emplace(std::move(key), std::move(entry)).first;
    }
    return row->second;
}

void TopLevelRows::put(DiskUsageEntry entry) {
    std::string key = entry.path;
    rows_.insert_or_assign(std::move(key), std::move(entry));
}

void TopLevelRows::markCurrentPartial() {
    if (current_ != nullptr) current_->partial = true;
}

void TopLevelRows::markPartial() {
    for (auto& [key, row] : rows_)
        row.partial = true;
}

std::vector<DiskUsageEntry> TopLevelRows::sorted() const {
    std::vector<DiskUsageEntry> result;
    result.reserve(rows_.size());
    for (const auto& [key, row] : rows_)
        result.push_back(row);
    std::ranges::sort(result, [](const DiskUsageEntry& a, const DiskUsageEntry& b) {
        return a.bytes != b.bytes ? a.bytes > b.bytes : a.path < b.path;
    });
    return result;
}

} // namespace varnet
