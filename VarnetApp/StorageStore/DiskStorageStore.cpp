#include "VarnetApp/StorageStore/DiskStorageStore.h"

#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "VarnetCore/Storage/ActivePaths.h"
#include "VarnetCore/Storage/StoragePaths.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

namespace varnet {

namespace {

constexpr const char* foldersKey = "storageFolders";
constexpr const char* localFolder = "Local folder";

StorageLocation locationOf(const std::string& path) {
    return {path, localFolder};
}

// A path is bytes. What is no UTF-8 is saved as such, everything else as a text that can be read in the file.
std::vector<std::string> readFolders(const QSettings& defaults) {
    std::vector<std::string> folders;
    for (const QVariant& saved : defaults.value(foldersKey).toList())
        folders.push_back(saved.toByteArray().toStdString());
    return folders;
}

QVariantList savedForm(const std::vector<std::string>& folders) {
    QVariantList saved;
    for (const std::string& folder : folders) {
        const auto bytes = QByteArray::fromStdString(folder);
        const bool text = QUtf8StringView(bytes).isValidUtf8();
        saved.append(text ? QVariant(QString::fromUtf8(bytes)) : QVariant(bytes));
    }
    return saved;
}

/// What a clean came to, in words.
QString sentence(const StorageCleanup::Outcome& outcome) {
    const QString moved = QString::number(outcome.moved);
    if (outcome.failures.empty())
        return "Moved " + moved + " folder" + (outcome.moved == 1 ? "" : "s") +
               " to Trash. Space is freed when you empty Trash. Reinstall dependencies before using that "
               "project "
               "again.";
    QStringList lines;
    for (const std::string& failure : outcome.failures)
        lines.append(QString::fromStdString(failure));
    return moved + " moved; " + QString::number(lines.size()) + " skipped. " + lines.join('\n');
}

} // namespace

std::vector<std::string> observedProjects(const MonitorSnapshot& snapshot) {
    std::set<std::string> roots;
    for (const ApplicationGroup& group : snapshot.groups)
        for (const SampleRef& process : group.processes)
            if (process->project) roots.insert(process->project->root);
    return {roots.begin(), roots.end()};
}

DiskStorageStore::DiskStorageStore(Setup setup, WholeDiskStore& wholeDisk)
    : setup_(std::move(setup)), wholeDisk_(wholeDisk) {
    if (setup_.defaults) savedFolders_ = readFolders(*setup_.defaults);
}

DiskStorageStore::~DiskStorageStore() {
    if (cancellation_) cancellation_->cancel();
}

void DiskStorageStore::select(std::optional<StorageProject> project) {
    selected_ = std::move(project);
    emit sheetsChanged();
}

void DiskStorageStore::openReview(std::optional<StorageProject> project) {
    review_ = std::move(project);
    if (review_) selected_.reset();
    emit sheetsChanged();
}

/// What a scan says on its way, until the main thread takes it: only the latest of it counts.
struct DiskStorageStore::Mailbox {
    std::mutex lock;
    std::shared_ptr<const StorageScan> scan;
    std::optional<QString> progress;
    bool posted = false;
    bool first = true;

    /// @return in how many seconds to come and take it; empty: somebody comes already
    std::optional<double> put(std::shared_ptr<const StorageScan> newScan,
                              std::optional<QString> newProgress) {
        const std::lock_guard guard(lock);
        if (newScan) scan = std::move(newScan);
        if (newProgress) progress = std::move(newProgress);
        if (std::exchange(posted, true)) return std::nullopt;
        return std::exchange(first, false) ? 0 : publishInterval;
    }
    std::pair<std::shared_ptr<const StorageScan>, std::optional<QString>> take() {
        const std::lock_guard guard(lock);
        posted = false;
        return {std::exchange(scan, nullptr), std::exchange(progress, std::nullopt)};
    }
};

void DiskStorageStore::refresh(const std::vector<std::string>& projects,
                               std::optional<StorageLocation> only) {
    if (setup_.preview) return;
    if (cancellation_) cancellation_->cancel();
    progress_ = "Finding workspaces…";
    std::vector<StorageLocation> locations;
    if (only) {
        locations.push_back(*only);
    } else {
        locations = StoragePaths::defaults(setup_.home);
        for (const std::string& folder : savedFolders_)
            locations.push_back(locationOf(folder));
        for (const std::string& root : projects)
            locations.push_back({root, "Observed project"});
    }
    scannedOnly_ = only;
    scannedPlaces_.clear();
    for (const StorageLocation& location : locations)
        scannedPlaces_.push_back(location.path);
    cancellation_ = std::make_shared<StorageCancellation>();
    message_.clear();
    messageTellsOfClean_ = false;
    emit changed();
    setup_.jobs.post([this, alive = std::weak_ptr(alive_), token = cancellation_, &main = setup_.mainQueue,
                      setup = StorageScanner::Setup{.token = cancellation_,
                                                    .probes = setup_.probes,
                                                    .clock = setup_.clock,
                                                    .home = setup_.home,
                                                    .seconds = std::nullopt,
                                                    .entryLimit = std::nullopt,
                                                    .git = setup_.git},
                      locations = std::move(locations),
                      related = only ? RelatedWorktrees::leave : RelatedWorktrees::include] {
        // A scan that another one has replaced says nothing any more.
        const auto mailbox = std::make_shared<Mailbox>();
        const auto tell = [&](std::shared_ptr<const StorageScan> scan, std::optional<QString> progress) {
            const auto wait = mailbox->put(std::move(scan), std::move(progress));
            if (!wait) return;
            main.postAfter(*wait, [this, alive, token, mailbox] {
                if (!alive.lock() || cancellation_ != token) return;
                auto [latest, text] = mailbox->take();
                if (text) {
                    progress_ = std::move(*text);
                    emit changed();
                }
                if (latest) {
                    scan_ = std::move(latest);
                    emit scanChanged();
                }
            });
        };
        StorageScanner scanner(setup);
        auto last = std::make_shared<const StorageScan>(scanner.scan(
            locations, related, [&](const std::string& text) { tell(nullptr, QString::fromStdString(text)); },
            [&](const StorageScan& scan) { tell(std::make_shared<const StorageScan>(scan), std::nullopt); }));
        main.post([this, alive, token, last = std::move(last)] {
            if (!alive.lock() || cancellation_ != token) return;
            scan_ = last;
            cancellation_.reset();
            emit scanChanged();
            emit changed();
        });
    });
}

void DiskStorageStore::stopScan() {
    // Its end comes back by itself, with what it has.
    if (cancellation_) cancellation_->cancel();
}

void DiskStorageStore::addFolder(const std::string& chosen, const std::vector<std::string>& projects) {
    if (setup_.preview) {
        setMessage("Example data. Add folders in the installed app.");
        return;
    }
    const std::string path = StoragePaths::canonical(chosen);
    if (path == "/" || path == StoragePaths::canonical(setup_.home)) {
        setMessage("Choose a folder containing projects, rather than your whole disk or home folder.");
        return;
    }
    if (std::ranges::find(savedFolders_, path) != savedFolders_.end()) {
        focusFolder(path, projects);
        return;
    }
    savedFolders_.push_back(path);
    saveFolders();
    focusedFolder_ = locationOf(path);
    refresh(projects, focusedFolder_);
}

void DiskStorageStore::removeFolder(const std::string& path, const std::vector<std::string>& projects) {
    if (setup_.preview) return;
    std::erase(savedFolders_, path);
    saveFolders();
    if (focusedFolder_ && focusedFolder_->path == path) {
        focusedFolder_.reset();
        refresh(projects);
    }
    emit changed();
}

bool DiskStorageStore::looksAt(const std::optional<StorageLocation>& folder) const {
    if (!folder || scannedOnly_) return scannedOnly_ == folder && !scannedPlaces_.empty();
    return std::ranges::find(scannedPlaces_, folder->path) != scannedPlaces_.end();
}

void DiskStorageStore::focusFolder(std::optional<std::string> path,
                                   const std::vector<std::string>& projects) {
    if (setup_.preview) return;
    focusedFolder_ = path ? std::optional(locationOf(*path)) : std::nullopt;
    if (!looksAt(focusedFolder_)) refresh(projects, focusedFolder_);
    emit changed();
}

void DiskStorageStore::reveal(const std::string& path) {
    if (!setup_.preview && setup_.files) setup_.files->revealFile(path);
}

void DiskStorageStore::revealTrash() {
    if (!setup_.preview && setup_.files) setup_.files->revealFiles(trashLocations_);
}

void DiskStorageStore::openConductor() {
    if (!setup_.preview && setup_.files &&
        setup_.files->openApplication({"com.conductor.app", "conductor", "Conductor"}))
        return;
    setMessage("Open Conductor and archive the workspace there. This preserves its workspace records.");
}

void DiskStorageStore::clean(std::vector<StorageCandidate> candidates,
                             const std::vector<std::string>& projects) {
    if (setup_.preview) {
        setMessage("Example data — no files were moved.");
        return;
    }
    if (cleaning_ || scanning() || candidates.empty() || !setup_.trash) return;
    cleaning_ = true;
    message_.clear();
    messageTellsOfClean_ = false;
    emit changed();
    setup_.jobs.post([this, alive = std::weak_ptr(alive_), &main = setup_.mainQueue, &probes = setup_.probes,
                      &trash = *setup_.trash, git = setup_.git.value_or(StorageGit(setup_.home)),
                      candidates = std::move(candidates), projects] {
        const StorageCleanup cleanup({.probes = probes, .trash = trash, .git = git});
        StorageCleanup::Outcome outcome = cleanup.clean(candidates, [&] { return activePaths(probes); });
        main.post([this, alive, projects, outcome = std::move(outcome)] {
            if (!alive.lock()) return;
            cleaning_ = false;
            review_.reset();
            trashLocations_ = outcome.trashLocations;
            emit sheetsChanged();
            if (setup_.didClean) setup_.didClean(outcome.moved, outcome.bytes);
            refresh(projects, focusedFolder_);
            setMessage(sentence(outcome), true);
        });
    });
}

void DiskStorageStore::dismissMessage() {
    setMessage({});
}

void DiskStorageStore::setMessage(QString message, bool tellsOfClean) {
    if (message_ == message && messageTellsOfClean_ == tellsOfClean) return;
    message_ = std::move(message);
    messageTellsOfClean_ = tellsOfClean;
    emit changed();
}

void DiskStorageStore::saveFolders() {
    if (!setup_.defaults) return;
    setup_.defaults->setValue(foldersKey, savedForm(savedFolders_));
    setup_.defaults->sync();
}

void DiskStorageStore::setPreview(std::shared_ptr<const StorageScan> scan, bool scanning, QString progress,
                                  bool cleaning, QString message, std::vector<std::string> trashLocations,
                                  std::vector<std::string> savedFolders) {
    if (!setup_.preview) return;
    scan_ = std::move(scan);
    cancellation_ = scanning ? std::make_shared<StorageCancellation>() : nullptr;
    progress_ = std::move(progress);
    cleaning_ = cleaning;
    message_ = std::move(message);
    messageTellsOfClean_ = !trashLocations.empty();
    trashLocations_ = std::move(trashLocations);
    savedFolders_ = std::move(savedFolders);
    emit scanChanged();
    emit changed();
}

void DiskStorageStore::setPreviewFocus(std::optional<StorageLocation> folder) {
    if (!setup_.preview) return;
    focusedFolder_ = std::move(folder);
    emit changed();
}

} // namespace varnet
