#pragma once

#include "VarnetApp/Platform/FileOpening.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Disk/DiskCapacity.h"
#include "VarnetCore/Disk/DiskUsageIndex.h"
#include "VarnetCore/Disk/DiskUsageScan.h"
#include "VarnetCore/Disk/DiskVolumes.h"
#include "VarnetCore/Storage/StorageCancellation.h"
#include "probes/Probes.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace varnet {

/// The whole disk's map as it is shown: runs scans and asks the index, one question at a time, and never
/// shows an answer to an older question. Main thread only; scans and questions run behind it.
class WholeDiskStore : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed)

public:
    /// References and pointers outlive the store.
    struct Setup {
        Probes& probes; ///< asked for walks, from another thread
        const Clock& clock;
        SerialQueue& mainQueue;
        SerialQueue& scans;                     ///< a thread that scans
        SerialQueue& questions;                 ///< another one, that asks
        platform::FileOpening* files = nullptr; ///< null: nothing can be shown in its folder
        bool preview = false;                   ///< shows prepared data and measures nothing
        /// What to scan instead of the startup disk; empty: that.
        std::optional<std::string> root = {};
        std::filesystem::path temporary = DiskIndexFolder::temporary();
        std::function<DiskVolumes()> volumes = DiskVolumes::read;
        std::function<std::optional<DiskCapacity>()> readCapacity = DiskCapacity::read;
    };

    explicit WholeDiskStore(Setup setup);
    /// Stops what runs and waits for no one: what is on its way back is ignored.
    ~WholeDiskStore() override;

    /// What is shown of the folder; empty: nothing yet.
    const std::optional<DiskUsageScan>& scan() const noexcept { return scan_; }
    const std::optional<DiskCapacity>& capacity() const noexcept { return capacity_; }
    /// The folder that is shown; empty: the top.
    const std::optional<std::string>& path() const noexcept { return path_; }
    bool scanning() const noexcept { return token_ != nullptr; }
    /// A sentence for the user.
    const std::optional<std::string>& failure() const noexcept { return failure_; }
    std::uint64_t itemsChecked() const noexcept { return itemsChecked_; }
    bool preview() const noexcept { return setup_.preview; }
    /// A scan was made, whole or not, that can be asked for folders.
    bool hasIndex() const noexcept { return index_ != nullptr; }

    /// Shows a folder, or the top.
    /// @param rescan measures the disk anew; without it only when it never was
    void open(std::optional<std::string> path, bool rescan);
    /// Stops a scan; what it has found so far stays.
    Q_INVOKABLE void cancel();
    /// Stops and takes the index from the disk: the program ends.
    void discard();
    void reveal(const std::string& path);
    /// Asks the view to explain what this user's rights do not reach.
    Q_INVOKABLE void openAccessSettings() { emit accessExplanationRequested(); }

    /// Shows prepared data. Does nothing on a live machine.
    void setPreview(DiskUsageScan scan, std::optional<DiskCapacity> capacity, std::optional<std::string> path,
                    bool scanning = false, std::optional<std::string> failure = {});

signals:
    void changed();
    void accessExplanationRequested();

private:
    void startScan();
    void refreshFolder();
    void received(std::uint64_t revision, const std::shared_ptr<DiskUsageIndex>& index,
                  DiskIndexResult<std::optional<DiskUsageScan>> answer);

    const Setup setup_;
    std::optional<DiskUsageScan> scan_;
    std::optional<DiskCapacity> capacity_;
    std::optional<std::string> path_;
    std::optional<std::string> failure_;
    std::uint64_t itemsChecked_ = 0;
    std::shared_ptr<StorageCancellation> token_; ///< of the scan that runs
    std::shared_ptr<DiskUsageIndex> index_;
    std::uint64_t queryRevision_ = 0;
    bool querying_ = false;
    bool needsQuery_ = false;

    /// What posted work looks at before it touches the store.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

/// Where a path leads whose names may be composed differently on disk; empty when nothing is there.
std::optional<std::string> pathOnDisk(const std::string& path);

} // namespace varnet
