#include "VarnetApp/StorageViews/ProjectStorageModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetApp/StorageViews/StorageTexts.h"
#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Storage/StoragePaths.h"

#include <algorithm>
#include <utility>

namespace varnet {

void ProjectStorageModel::begin() {
    storage_ = context().storage;
    if (!storage_) return;
    connect(storage_, &DiskStorageStore::scanChanged, this, &ProjectStorageModel::takeScan);
    connect(storage_, &DiskStorageStore::changed, this, &ProjectStorageModel::takeState);
    connect(&context().localization, &AppLocalization::languageChanged, this, &ProjectStorageModel::takeScan);
    takeState();
    takeScan();
    emit layoutChanged();
}

bool ProjectStorageModel::preview() const {
    return storage_ && storage_->preview();
}

std::vector<std::string> ProjectStorageModel::observed() const {
    return observedProjects(store().latestSnapshot());
}

void ProjectStorageModel::takeState() {
    const DiskStorageStore& storage = *storage_;
    if (std::exchange(progress_, storage.progress()) != progress_) emit progressChanged();

    const bool revealable = storage.canRevealTrash();
    if (message_ != storage.message() || canRevealTrash_ != revealable) {
        message_ = storage.message();
        canRevealTrash_ = revealable;
        emit messageChanged();
    }

    const auto& focus = storage.focusedFolder();
    const auto& saved = storage.savedFolders();
    const auto found = focus ? std::ranges::find(saved, focus->path) : saved.end();
    const int focused = found == saved.end() ? -1 : static_cast<int>(found - saved.begin());
    const bool otherFocus = focused != focusedFolder_;
    if (otherFocus || folders_ != saved) {
        focusedFolder_ = focused;
        focusName_ = focus ? shownName(LexicalPath::lastComponent(focus->path)) : QString();
        folders_ = saved;
        emit foldersChanged();
    }
    if (otherFocus) level_ = {};
    if (otherFocus || scanning_ != storage.scanning()) takeScan();
}

void ProjectStorageModel::takeScan() {
    const DiskStorageStore& storage = *storage_;
    const std::shared_ptr<const StorageScan> scan = storage.scan();
    scanning_ = storage.scanning();
    started_ = scan || scanning_;
    families_.clear();
    notes_.clear();
    if (scan) {
        const auto& focus = storage.focusedFolder();
        if (focus) {
            StorageScan within;
            for (const StorageProject& project : scan->projects)
                if (StoragePaths::contains(project.path, focus->path)) within.projects.push_back(project);
            families_ = within.families();
        } else {
            families_ = scan->families();
        }
        for (const std::string& note : scan->notes)
            notes_.append(QString::fromStdString(note));
    }
    // Until it ends, every scan is partial.
    partial_ = scan && scan->partial && !scanning_;
    empty_ = scan && families_.empty() && !scanning_;
    tellFigures();
    level_ = StorageLevels::present(level_, families_);
    tellLevel();
    tellRows();
}

void ProjectStorageModel::tellFigures() {
    const Figures figures(context().localization.locale());
    if (!storage_->scan()) {
        allocated_ = toReview_ = projects_ = worktrees_ = Figures::unknown();
        measured_.clear();
    } else {
        std::uint64_t bytes = 0;
        std::uint64_t review = 0;
        std::size_t members = 0;
        std::size_t worktrees = 0;
        std::size_t measured = 0;
        for (const StorageFamily& family : families_) {
            bytes += family.bytes();
            review += family.reviewBytes();
            members += family.members.size();
            worktrees += family.worktreeCount();
            measured +=
                static_cast<std::size_t>(std::ranges::count(family.members, true, &StorageProject::measured));
        }
        allocated_ = figures.diskSize(bytes);
        toReview_ = figures.diskSize(review);
        projects_ = figures.count(families_.size());
        worktrees_ = figures.count(worktrees);
        measured_ = QString("%1 of %2 folders measured.").arg(measured).arg(members);
    }
    emit scanChanged();
}

void ProjectStorageModel::tellLevel() {
    const QLocale& locale = context().localization.locale();
    std::vector<TreemapTile> tiles = StorageLevels::tiles(level_, families_, scanning_);
    std::uint64_t bytes = 0;
    for (const TreemapTile& tile : tiles)
        bytes += tile.node.bytes;
    trail_ = StorageLevels::trail(level_, families_);
    crumbs_.clear();
    for (const StorageCrumb& crumb : trail_)
        crumbs_.append(crumb.ours ? context().localization.text(crumb.title) : crumb.title);
    if (!focusName_.isEmpty()) crumbs_.front() = focusName_;
    crumbSize_ = StorageTexts::size(bytes, locale);
    projectOpen_ = level_.kind == StorageLevel::Kind::project;
    mapEmpty_ = bytes == 0;
    map_.update(std::move(tiles));
    emit levelChanged();
}

void ProjectStorageModel::tellRows() {
    const StorageListing listing{
        .search = search_,
        .unfolded = [this](const std::string& id, bool found) { return isUnfolded(id, found); },
        .scanning = scanning_,
        .locale = context().localization.locale()};
    rows_.update(listing.rows(families_));
    noMatch_ = rows_.size() == 0 && !families_.empty();
    emit searchChanged();
}

bool ProjectStorageModel::isUnfolded(const std::string& familyID, bool found) const {
    return unfolded_.contains(familyID) || (found && !folded_.contains(familyID));
}

void ProjectStorageModel::setSearch(const QString& search) {
    if (search == search_) return;
    search_ = search;
    folded_.clear();
    if (storage_) tellRows();
}

bool ProjectStorageModel::listOnly() const {
    return storage_ && storage_->page.listOnly;
}

void ProjectStorageModel::setListOnly(bool alone) {
    if (!storage_ || alone == listOnly()) return;
    storage_->page.listOnly = alone;
    emit layoutChanged();
}

void ProjectStorageModel::show(StorageLevel level) {
    if (level == level_) return;
    level_ = std::move(level);
    tellLevel();
}

void ProjectStorageModel::openTile(const QString& key) {
    if (projectOpen_) {
        openDetails();
    } else {
        show(StorageLevels::below(level_, keyFromQml(key), families_));
    }
}

void ProjectStorageModel::goUp() {
    if (trail_.size() > 1) show(trail_[trail_.size() - 2].level);
}

void ProjectStorageModel::goTo(int crumb) {
    if (crumb >= 0 && static_cast<std::size_t>(crumb) < trail_.size())
        show(trail_[static_cast<std::size_t>(crumb)].level);
}

void ProjectStorageModel::openDetails() {
    if (const StorageProject* const project = StorageLevels::projectOf(families_, level_.projectPath))
        storage_->select(*project);
}

void ProjectStorageModel::openRow(const QString& key) {
    const int index = indexOf(key);
    if (index < 0) return;
    const StorageRow row = rows_.at(static_cast<std::size_t>(index));
    if (row.foldable) {
        setUnfolded(key, !row.unfolded);
        return;
    }
    const StorageFamily* const family = StorageLevels::familyOf(families_, row.familyID);
    if (!family) return;
    for (const StorageProject& member : family->members)
        if (!row.member || projectRowKey(member.path) == row.key) {
            storage_->select(member);
            return;
        }
}

void ProjectStorageModel::setUnfolded(const QString& key, bool unfolded) {
    const int index = indexOf(key);
    if (index < 0) return;
    const std::string id = rows_.at(static_cast<std::size_t>(index)).familyID;
    if (unfolded) {
        unfolded_.insert(id);
        folded_.erase(id);
    } else {
        unfolded_.erase(id);
        folded_.insert(id);
    }
    tellRows();
}

QString ProjectStorageModel::tileOf(const QString& rowKey) const {
    const int index = indexOf(rowKey);
    if (index < 0) return {};
    const StorageRow& row = rows_.at(static_cast<std::size_t>(index));
    if (level_.kind == StorageLevel::Kind::family && row.member)
        for (const TreemapTile& tile : map_.tiles())
            if (projectRowKey(tile.node.id) == row.key) return keyInQml(tile.node.id);
    for (const TreemapTile& tile : map_.tiles())
        if (tile.node.id == row.familyID) return keyInQml(tile.node.id);
    return {};
}

QString ProjectStorageModel::rowOf(const QString& tileKey) const {
    const std::string id = keyFromQml(tileKey);
    for (const std::string& key : {projectRowKey(id), familyRowKey(id)})
        if (rows_.indexOf(key) >= 0) return keyInQml(key);
    return {};
}

int ProjectStorageModel::indexOf(const QString& rowKey) const {
    return rows_.indexOf(keyFromQml(rowKey));
}

std::optional<std::string> ProjectStorageModel::folderAt(int index) const {
    if (index < 0 || index >= std::ssize(folders_)) return std::nullopt;
    return folders_[static_cast<std::size_t>(index)];
}

QStringList ProjectStorageModel::folders() const {
    QStringList shown;
    for (const std::string& folder : folders_)
        shown.append(shownName(folder));
    return shown;
}

void ProjectStorageModel::rescan() {
    if (storage_) storage_->refresh(observed(), storage_->focusedFolder());
}

void ProjectStorageModel::stopScan() {
    if (storage_) storage_->stopScan();
}

void ProjectStorageModel::addFolder(const QUrl& folder) {
    if (!storage_ || (folder.isEmpty() && !preview())) return;
    // Not toLocalFile(), which has no place for bytes that are no text.
    const QByteArray path = QByteArray::fromPercentEncoding(folder.path(QUrl::FullyEncoded).toLatin1());
    storage_->addFolder(path.toStdString(), observed());
}

void ProjectStorageModel::removeFolder(int index) {
    if (const auto folder = folderAt(index)) storage_->removeFolder(*folder, observed());
}

void ProjectStorageModel::focusFolder(int index) {
    if (!storage_ || index >= std::ssize(folders_)) return;
    storage_->focusFolder(folderAt(index), observed());
}

void ProjectStorageModel::showTrash() {
    if (storage_) storage_->revealTrash();
}

void ProjectStorageModel::dismissMessage() {
    if (storage_) storage_->dismissMessage();
}

} // namespace varnet
