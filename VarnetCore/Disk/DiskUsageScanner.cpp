#include "VarnetCore/Disk/DiskUsageScanner.h"

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Disk/DiskIndexing.h"
#include "VarnetCore/Disk/TopLevelRows.h"
#include "VarnetCore/Storage/FileKey.h"

#include <sys/stat.h>

#include <new>
#include <system_error>
#include <unordered_set>
#include <utility>

namespace varnet {

namespace {

constexpr const char* notSaved = "Couldn’t save the disk map. Try rescanning.";

/// The state of one scan, on the thread that walks.
class DiskWalkThrough {
public:
    DiskWalkThrough(const DiskUsageScanner::Setup& setup, DiskIndexing* indexing,
                    const DiskUsageScanner::Update& update)
        : setup_(setup), indexing_(indexing), update_(update) {
        scan_.date = setup.clock.now();
        lastPublish_ = scan_.date;
    }

    DiskUsageScan run(const std::vector<DiskRoot>& roots) {
        for (const DiskRoot& root : roots) {
            checkStopped();
            if (!stopped_) walkRoot(root);
            if (stopped_) break;
        }
        scan_.complete = !stopped_;
        scan_.stopped = stopped_;
        if (stopped_) rows_.markPartial();
        publish();
        return std::move(scan_);
    }

    DiskUsageScan& scan() { return scan_; }

private:
    void checkStopped() {
        if (indexing_ != nullptr && indexing_->failed()) {
            scan_.failure = notSaved;
            stopped_ = true;
        }
        if (setup_.token->cancelled()) stopped_ = true;
    }

    void tell(DiskRecord::Kind kind, std::string_view path, bool flag, std::uint64_t bytes = 0,
              bool unreadable = false) {
        if (indexing_ == nullptr) return;
        indexing_->send({.bytes = bytes,
                         .entriesRead = scan_.entriesRead,
                         .unreadable = static_cast<std::uint32_t>(scan_.unreadable),
                         .skippedVolumes = static_cast<std::uint32_t>(scan_.skippedVolumes),
                         .kind = kind,
                         .flag = flag,
                         .isUnreadable = unreadable},
                        path);
    }

    /// A root of which nothing can be said.
    void giveUp(const DiskRoot& root) {
        ++scan_.unreadable;
        rows_.put(
            {root.systemOnly ? "/" : root.path,
             std::string(root.systemOnly ? std::string_view("macOS") : LexicalPath::lastComponent(root.path)),
             true, 0, true});
    }

    void walkRoot(const DiskRoot& root) {
        tell(DiskRecord::Kind::root, root.path, root.systemOnly);
        const auto exclusions = exclusionsOf(root, setup_.volumes);
        struct stat status{};
        std::unique_ptr<DiskWalk> walk;
        if (exclusions && lstat(root.path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
            walk = setup_.probes.walkDisk(root.path, DiskScope::oneVolume);
        if (!walk) {
            giveUp(root);
            tell(DiskRecord::Kind::rootFailed, {}, true);
            return;
        }
        rows_.startRoot(root.path, root.systemOnly);
        const auto device = static_cast<std::int32_t>(status.st_dev);
        std::int32_t step = 0;
        for (;;) {
            if (setup_.entryLimit && (*setup_.entryLimit <= 0 ||
                                      scan_.entriesRead >= static_cast<std::uint64_t>(*setup_.entryLimit))) {
                stopped_ = true;
                break;
            }
            VNDiskEntry entry{};
            step = walk->next(entry);
            if (step <= 0) break;
            if (entry.path == nullptr) continue;
            ++scan_.entriesRead;
            if (visit(root, *exclusions, device, entry) == Onward::skip) walk->skip();
            checkStopped();
            if (stopped_) break;
        }
        if (step < 0) {
            ++scan_.unreadable;
            rows_.markCurrentPartial();
        }
        tell(step < 0 ? DiskRecord::Kind::rootFailed : DiskRecord::Kind::rootEnd, {}, !stopped_);
    }

    enum class Onward { descend, skip };

    Onward visit(const DiskRoot& root, const std::set<std::string, std::less<>>& exclusions,
                 std::int32_t device, const VNDiskEntry& entry) {
        const std::string_view path = entry.path;
        const bool isRoot = path == root.path;
        if (!isRoot && !exclusions.empty() && exclusions.contains(path)) return Onward::skip;
        const bool isError = entry.kind == VN_DISK_ERROR;
        if (!isError && entry.device != device) {
            ++scan_.skippedVolumes;
            return Onward::skip;
        }
        if (isRoot) {
            if (isError) giveUp(root);
            tell(DiskRecord::Kind::entry, path, true, 0, isError);
            return Onward::descend;
        }
        const bool isFolder = entry.kind == VN_DISK_DIRECTORY;
        const std::uint64_t bytes = isError ? 0 : isFolder ? entry.allocated : countedOnce(entry);
        if (isError) ++scan_.unreadable;
        rows_.add(path, isFolder || isError, bytes, isError);
        tell(DiskRecord::Kind::entry, path, isFolder || isError, bytes, isError);
        if (const Date now = setup_.clock.now(); now - lastPublish_ >= setup_.progressInterval) {
            lastPublish_ = now;
            publish();
        }
        return Onward::descend;
    }

    std::uint64_t countedOnce(const VNDiskEntry& entry) {
        if (entry.links < 2) return entry.allocated;
        return links_.insert({entry.device, entry.inode}).second ? entry.allocated : 0;
    }

    void publish() {
        scan_.entries = rows_.sorted();
        scan_.date = setup_.clock.now();
        if (indexing_ != nullptr) {
            indexing_->publish(scan_);
        } else if (update_) {
            update_(scan_);
        }
    }

    const DiskUsageScanner::Setup& setup_;
    DiskIndexing* const indexing_;
    const DiskUsageScanner::Update& update_;
    DiskUsageScan scan_;
    TopLevelRows rows_;
    std::unordered_set<FileKey> links_; ///< files with several names that have been counted
    Date lastPublish_;
    bool stopped_ = false;
};

} // namespace

DiskUsageScan DiskUsageScanner::scan(const std::optional<std::string>& path, DiskUsageIndex* index,
                                     const Update& update) const {
    const std::vector<DiskRoot> roots = diskRoots(path, setup_.volumes);
    if (index == nullptr) return DiskWalkThrough(setup_, nullptr, update).run(roots);

    DiskUsageScan refused;
    refused.stopped = true;
    refused.failure = notSaved;
    refused.date = setup_.clock.now();
    auto writer = DiskUsageIndexWriter::open(index->database(), setup_.clock);
    if (!writer) return refused;
    try {
        DiskIndexing indexing(std::move(*writer), update);
        DiskUsageScan scan = DiskWalkThrough(setup_, &indexing, update).run(roots);
        indexing.finish();
        // The last of it may have failed after the walk had ended.
        if (indexing.failed() && !scan.failure) {
            scan.complete = false;
            scan.stopped = true;
            scan.failure = notSaved;
            for (DiskUsageEntry& entry : scan.entries)
                entry.partial = true;
            if (update) update(scan);
        }
        return scan;
    } catch (const std::system_error&) { // no thread is to be had
        return refused;
    } catch (const std::bad_alloc&) {
        return refused;
    }
}

} // namespace varnet
