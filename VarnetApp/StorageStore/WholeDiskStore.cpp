#include "VarnetApp/StorageStore/WholeDiskStore.h"

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Disk/DiskUsageScanner.h"

#include <system_error>
#include <utility>

namespace varnet {

WholeDiskStore::WholeDiskStore(Setup setup) : setup_(std::move(setup)) {
    if (!setup_.preview)
        setup_.questions.post([temporary = setup_.temporary] { DiskIndexFolder::removeStale(temporary); });
}

WholeDiskStore::~WholeDiskStore() {
    if (token_) token_->cancel();
}

void WholeDiskStore::open(std::optional<std::string> path, bool rescan) {
    if (setup_.preview) return;
    // An old folder must not flash under a new title.
    if (path != path_) scan_.reset();
    path_ = std::move(path);
    if (!rescan && index_) {
        emit changed();
        refreshFolder();
    } else {
        startScan();
    }
}

void WholeDiskStore::startScan() {
    cancel();
    failure_.reset();
    capacity_ = setup_.readCapacity();
    auto index = DiskUsageIndex::make(setup_.temporary);
    if (!index) {
        failure_ = "Couldn’t create the disk map. Try rescanning.";
        emit changed();
        return;
    }
    index_ = std::move(*index);
    scan_.reset();
    itemsChecked_ = 0;
    token_ = std::make_shared<StorageCancellation>();
    emit changed();
    setup_.scans.post([this, alive = std::weak_ptr(alive_), token = token_, index = index_,
                       &main = setup_.mainQueue, &probes = setup_.probes, &clock = setup_.clock,
                       volumes = setup_.volumes, root = setup_.root] {
        const auto hop = [&main, alive](std::function<void()> work) {
            main.post([alive, work = std::move(work)] {
                if (alive.lock()) work();
            });
        };
        const DiskUsageScanner scanner({.token = token,
                                        .probes = probes,
                                        .clock = clock,
                                        .volumes = volumes(),
                                        .entryLimit = std::nullopt,
                                        .progressInterval = 0.75});
        const DiskUsageScan last = scanner.scan(root, index.get(), [&](const DiskUsageScan& scan) {
            hop([this, token, read = scan.entriesRead] {
                if (token_ != token) return;
                itemsChecked_ = read;
                emit changed();
                refreshFolder();
            });
        });
        hop([this, token, read = last.entriesRead, failure = last.failure] {
            if (token_ != token) return;
            token_.reset();
            failure_ = failure;
            itemsChecked_ = read;
            capacity_ = setup_.readCapacity();
            emit changed();
            refreshFolder();
        });
    });
}

void WholeDiskStore::refreshFolder() {
    if (!index_) return;
    const std::uint64_t revision = ++queryRevision_;
    if (querying_) {
        needsQuery_ = true;
        return;
    }
    querying_ = true;
    setup_.questions.post([this, alive = std::weak_ptr(alive_), index = index_, path = path_, revision,
                           &main = setup_.mainQueue]() mutable {
        auto answer = index->folder(path);
        // The index goes to the main thread with its answer: the last to hold it removes it there.
        main.post([this, alive, revision, index = std::move(index), answer = std::move(answer)]() mutable {
            if (alive.lock()) received(revision, index, std::move(answer));
        });
    });
}

void WholeDiskStore::received(std::uint64_t revision, const std::shared_ptr<DiskUsageIndex>& index,
                              DiskIndexResult<std::optional<DiskUsageScan>> answer) {
    querying_ = false;
    if (revision == queryRevision_ && index == index_) {
        if (!answer) {
            failure_ = "Couldn’t open the disk map. Try rescanning.";
        } else if (*answer) {
            scan_ = std::move(**answer);
        } else if (!scanning()) {
            scan_ = DiskUsageScan{}; // the folder was not met: it is shown as empty
        }
        emit changed();
    }
    if (std::exchange(needsQuery_, false)) refreshFolder();
}

void WholeDiskStore::cancel() {
    const bool ran = token_ != nullptr;
    if (ran) token_->cancel();
    token_.reset();
    ++queryRevision_;
    needsQuery_ = false;
    if (!ran) return;
    if (scan_ && !scan_->complete) scan_->stopped = true;
    emit changed();
}

void WholeDiskStore::discard() {
    cancel();
    if (index_) index_->discard();
    index_.reset();
}

void WholeDiskStore::reveal(const std::string& path) {
    if (setup_.preview || !setup_.files) return;
    setup_.files->revealFile(pathOnDisk(path).value_or(path));
}

void WholeDiskStore::setPreview(DiskUsageScan scan, std::optional<DiskCapacity> capacity,
                                std::optional<std::string> path, bool scanning,
                                std::optional<std::string> failure) {
    if (!setup_.preview) return;
    scan_ = std::move(scan);
    capacity_ = std::move(capacity);
    path_ = std::move(path);
    failure_ = std::move(failure);
    itemsChecked_ = scan_->entriesRead;
    token_ = scanning ? std::make_shared<StorageCancellation>() : nullptr;
    emit changed();
}

std::optional<std::string> pathOnDisk(const std::string& path) {
    std::error_code error;
    if (std::filesystem::symlink_status(path, error).type() != std::filesystem::file_type::not_found)
        return path;
    std::filesystem::path found = "/";
    for (const std::filesystem::path& name : std::filesystem::path(path).relative_path()) {
        const std::filesystem::path next = found / name;
        if (std::filesystem::symlink_status(next, error).type() != std::filesystem::file_type::not_found) {
            found = next;
            continue;
        }
        const std::string composed = composedUtf8(name.native());
        bool met = false;
        for (std::filesystem::directory_iterator entries(found, error), end; !error && entries != end && !met;
             entries.increment(error)) {
            met = composedUtf8(entries->path().filename().native()) == composed;
            if (met) found = entries->path();
            if (met) break;
        }
        if (!met) return std::nullopt;
    }
    return found.string();
}

} // namespace varnet
