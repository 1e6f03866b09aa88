#include "VarnetApp/StorageViews/StorageDetailModel.h"

#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetApp/StorageViews/StorageTexts.h"

#include <utility>

namespace varnet {

void StorageDetailModel::begin() {
    DiskStorageStore* const storage = context().storage;
    if (!storage) return;
    connect(storage, &DiskStorageStore::sheetsChanged, this, &StorageDetailModel::refresh);
    connect(storage, &DiskStorageStore::changed, this, &StorageDetailModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &StorageDetailModel::refresh);
    refresh();
}

void StorageDetailModel::refresh() {
    const DiskStorageStore& storage = *context().storage;
    const std::optional<StorageProject>& project = storage.selected();
    const QLocale& locale = context().localization.locale();
    // What a sheet that closes shows stays until it has gone.
    Shown shown = shown_;
    shown.open = project.has_value();
    if (project) {
        shown.scanning = storage.scanning();
        shown.title = shownName(project->name);
        shown.size = StorageTexts::size(*project, locale);
        shown.path = shownName(project->path);
        shown.source = shownName(project->source);
        shown.ofAgent = StorageTexts::isOfAgent(*project);
        shown.partial = StorageTexts::isPartial(*project, shown.scanning);
        shown.worktree = project->worktree;
        shown.managed = StorageTexts::isManaged(*project);
        shown.toReview = StorageTexts::toReview(project->reviewBytes(), locale);
        facts_.update(projectFacts(*project, locale));
        buckets_.update(bucketFacts(*project, locale));
        candidates_.update(candidateRows(*project, [](const std::string&) { return true; }, locale));
    }
    if (shown == shown_) return;
    shown_ = std::move(shown);
    emit changed();
}

void StorageDetailModel::reveal() {
    if (!shown_.open) return;
    if (const auto& project = context().storage->selected()) context().storage->reveal(project->path);
}

void StorageDetailModel::openManager() {
    if (!shown_.open) return;
    context().storage->select({});
    context().storage->openConductor();
}

void StorageDetailModel::review() {
    if (!shown_.open) return;
    context().storage->openReview(context().storage->selected());
}

void StorageDetailModel::close() {
    if (shown_.open) context().storage->select({});
}

} // namespace varnet
