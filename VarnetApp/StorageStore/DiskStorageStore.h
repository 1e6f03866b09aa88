#pragma once

#include "VarnetApp/StorageStore/BackgroundQueue.h"
#include "VarnetApp/StorageStore/WholeDiskStore.h"
#include "VarnetCore/Storage/StorageCleanup.h"
#include "VarnetCore/Storage/StorageScan.h"
#include "VarnetCore/Storage/StorageScanner.h"

#include <QObject>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

struct MonitorSnapshot;

/// What is behind the storage page: which folders are scanned, the scan that runs, what the user reviews, and
/// the one act that moves folders to the Trash. Main thread only; scans and cleanups run behind it on value
/// copies with a token, and what comes back late is ignored.
class DiskStorageStore : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed)
    Q_PROPERTY(bool cleaning READ cleaning NOTIFY changed)
    Q_PROPERTY(QString progress READ progress NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)

public:
    /// References and pointers outlive the store.
    struct Setup {
        Probes& probes; ///< asked from another thread for walks and for where processes stand
        const Clock& clock;
        SerialQueue& mainQueue;
        SerialQueue& jobs;                      ///< a thread for scans and cleanups, one at a time
        std::string home;                       ///< the user's home directory
        QSettings* defaults = nullptr;          ///< null: saved folders live in memory
        platform::FileOpening* files = nullptr; ///< null: nothing can be shown in its folder
        Trash* trash = nullptr;                 ///< null: nothing can be moved
        bool preview = false;                   ///< shows prepared data; nothing runs
        std::optional<StorageGit> git = {};     ///< empty: this machine's
        /// After a clean: folders that moved, and their bytes.
        std::function<void(std::size_t, std::uint64_t)> didClean = {};
    };

    /// @param wholeDisk outlives the store
    DiskStorageStore(Setup setup, WholeDiskStore& wholeDisk);
    ~DiskStorageStore() override;

    WholeDiskStore& wholeDisk() const noexcept { return wholeDisk_; }
    /// Empty before the first scan has said anything.
    const std::shared_ptr<const StorageScan>& scan() const noexcept { return scan_; }
    bool scanning() const noexcept { return cancellation_ != nullptr; }
    bool cleaning() const noexcept { return cleaning_; }
    /// The folder that the page is restricted to; empty: all.
    const std::optional<StorageLocation>& focusedFolder() const noexcept { return focusedFolder_; }
    QString progress() const { return progress_; }
    /// A sentence for the user until it is dismissed; empty: none.
    QString message() const { return message_; }
    /// Canonical paths, the oldest first; any bytes.
    const std::vector<std::string>& savedFolders() const noexcept { return savedFolders_; }
    const std::vector<std::string>& trashLocations() const noexcept { return trashLocations_; }
    /// The message tells of a clean whose folders can be shown in the Trash.
    bool canRevealTrash() const noexcept { return messageTellsOfClean_ && !trashLocations_.empty(); }
    bool preview() const noexcept { return setup_.preview; }

    /// The project in the detail sheet, and the one in the review sheet; empty: the sheet is closed.
    const std::optional<StorageProject>& selected() const noexcept { return selected_; }
    const std::optional<StorageProject>& review() const noexcept { return review_; }
    void select(std::optional<StorageProject> project);
    void openReview(std::optional<StorageProject> project);

    /// Scans, in place of a scan that runs. What it finds on its way is published now and then, and the end
    /// at once.
    /// @param projects roots of the projects that the monitor sees
    /// @param only one folder; empty: every place that is known
    void refresh(const std::vector<std::string>& projects, std::optional<StorageLocation> only = {});
    /// Ends a running scan at once; what it has found stays.
    Q_INVOKABLE void stopScan();
    /// Takes a folder that the user has chosen into the list, and scans it; one that is in the list already
    /// is focused.
    void addFolder(const std::string& path, const std::vector<std::string>& projects);
    /// Takes a folder off the list. Nothing on disk is touched. Scans when the page was restricted to it.
    void removeFolder(const std::string& path, const std::vector<std::string>& projects);
    /// Restricts the page to a folder, or to none. Scans only when the present scan, or the one that runs,
    /// does not look there.
    void focusFolder(std::optional<std::string> path, const std::vector<std::string>& projects);
    void reveal(const std::string& path);
    void revealTrash();
    void openConductor();
    /// Moves reviewed folders to the Trash, each checked anew.
    void clean(std::vector<StorageCandidate> candidates, const std::vector<std::string>& projects);
    Q_INVOKABLE void dismissMessage();

    /// Shows prepared data. Does nothing on a live machine.
    void setPreview(std::shared_ptr<const StorageScan> scan, bool scanning = false, QString progress = {},
                    bool cleaning = false, QString message = {}, std::vector<std::string> trashLocations = {},
                    std::vector<std::string> savedFolders = {});
    /// The same for the folder that the page is restricted to.
    void setPreviewFocus(std::optional<StorageLocation> folder);

    /// Seconds between two looks at a running scan: every look is drawn anew.
    static constexpr double publishInterval = 0.1;

    /// What the user has chosen to look at, kept while the page is away.
    struct PageChoice {
        bool wholeDisk = false; ///< instead of the projects
        bool listOnly = false;  ///< the projects' list alone, without their map
    };
    PageChoice page;

    static constexpr const char* addFolderTitle = "Choose a projects or worktrees folder";

signals:
    void changed();
    void scanChanged();
    void sheetsChanged();

private:
    struct Mailbox;

    void setMessage(QString message, bool tellsOfClean = false);
    void saveFolders();
    bool looksAt(const std::optional<StorageLocation>& folder) const;

    const Setup setup_;
    WholeDiskStore& wholeDisk_;
    std::shared_ptr<const StorageScan> scan_;
    std::optional<StorageLocation> focusedFolder_;
    QString progress_;
    QString message_;
    bool messageTellsOfClean_ = false;
    bool cleaning_ = false;
    std::optional<StorageProject> selected_;
    std::optional<StorageProject> review_;
    std::vector<std::string> savedFolders_;
    std::vector<std::string> trashLocations_;
    std::shared_ptr<StorageCancellation> cancellation_; ///< of the scan that runs
    std::optional<StorageLocation> scannedOnly_;        ///< of the latest scan; empty: every place
    std::vector<std::string> scannedPlaces_;            ///< of the latest scan; empty before one

    /// What posted work looks at before it touches the store.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

/// Roots of the projects that the monitor sees, each once, ascending.
std::vector<std::string> observedProjects(const MonitorSnapshot& snapshot);

} // namespace varnet
