#include "VarnetApp/StorageViews/StorageReviewModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetApp/StorageViews/StorageTexts.h"

#include <utility>

namespace varnet {

void StorageReviewModel::begin() {
    DiskStorageStore* const storage = context().storage;
    if (!storage) return;
    connect(storage, &DiskStorageStore::sheetsChanged, this, &StorageReviewModel::refresh);
    connect(storage, &DiskStorageStore::changed, this, &StorageReviewModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &StorageReviewModel::refresh);
    refresh();
}

void StorageReviewModel::refresh() {
    const DiskStorageStore& storage = *context().storage;
    const std::optional<StorageProject>& project = storage.review();
    const QLocale& locale = context().localization.locale();
    // What a sheet that closes shows stays until it has gone.
    Shown shown = shown_;
    shown.open = project.has_value();
    shown.cleaning = storage.cleaning();
    if (!project) {
        spared_.clear();
        confirmed_ = false;
    } else {
        shown.title = shownName(project->name);
        shown.branch = StorageTexts::title(*project);
        shown.source = shownName(project->source);
        shown.ofAgent = StorageTexts::isOfAgent(*project);
        shown.worktree = project->worktree;
        const std::uint64_t all = project->reviewBytes();
        shown.toReview = all == 0 ? QString() : "To review " + StorageTexts::size(all, locale);
        candidates_.update(candidateRows(
            *project, [this](const std::string& path) { return !spared_.contains(path); }, locale));
        std::uint64_t bytes = 0;
        std::size_t count = 0;
        for (const StorageCandidate& candidate : project->candidates) {
            if (spared_.contains(candidate.path)) continue;
            bytes += candidate.bytes;
            ++count;
        }
        shown.chosen =
            QString("%1 of %2 %3 · %4")
                .arg(count)
                .arg(candidates_.size())
                .arg(candidates_.size() == 1 ? "folder" : "folders", StorageTexts::size(bytes, locale));
        shown.confirmed = confirmed_;
        shown.canMove = confirmed_ && count > 0 && !shown.cleaning && !storage.scanning();
        shown.reason = storage.scanning() ? "Wait until the scan is done, or stop it."
                       : count == 0       ? "Tick a folder first."
                       : !confirmed_      ? "Tick the confirmation above first."
                                          : "";
    }
    if (shown == shown_) return;
    shown_ = std::move(shown);
    emit changed();
}

void StorageReviewModel::setConfirmed(bool confirmed) {
    if (!shown_.open || shown_.cleaning) return;
    confirmed_ = confirmed;
    refresh();
}

void StorageReviewModel::tick(const QString& key, bool ticked) {
    if (!shown_.open || shown_.cleaning) return;
    const std::string path = keyFromQml(key);
    if (ticked) {
        spared_.erase(path);
    } else {
        spared_.insert(path);
    }
    refresh();
}

void StorageReviewModel::moveToTrash() {
    if (!shown_.open) return;
    const std::optional<StorageProject>& project = context().storage->review();
    if (!shown_.canMove || !project) return;
    std::vector<StorageCandidate> chosen;
    for (const StorageCandidate& candidate : project->candidates)
        if (!spared_.contains(candidate.path)) chosen.push_back(candidate);
    const bool preview = context().storage->preview();
    context().storage->clean(std::move(chosen), observedProjects(store().latestSnapshot()));
    // The message about prepared data stands on the page.
    if (preview) context().storage->openReview({});
}

void StorageReviewModel::close() {
    if (shown_.open && !shown_.cleaning) context().storage->openReview({});
}

} // namespace varnet
