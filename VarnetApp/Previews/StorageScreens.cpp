#include "VarnetApp/Previews/StorageScreens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/PreparedStorage.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetApp/StorageViews/ProjectStorageModel.h"
#include "VarnetApp/StorageViews/StorageReviewModel.h"

#include <QQmlEngine>
#include <QQuickItem>

#include <utility>

namespace varnet {

namespace {

using namespace PreparedStorage;
using Storage = std::function<void(DiskStorageStore&)>;
using Touch = std::function<void(QQuickItem&)>;

constexpr QSize window{1040, 720};
constexpr QSize leastWindow{720, 520};
constexpr QSize wideWindow{1400, 900};

Storage after(Scan (*scan)()) {
    return [scan](DiskStorageStore& storage) { storage.setPreview(scan()); };
}

Storage during(Scan (*scan)(), const char* progress) {
    return [scan, progress](DiskStorageStore& storage) {
        storage.setPreview(scan ? scan() : nullptr, true, progress);
    };
}

void inList(DiskStorageStore& storage) {
    storage.setPreview(measured());
    storage.page.listOnly = true;
}

void withFolders(DiskStorageStore& storage) {
    storage.setPreview(measured(), false, {}, false, {}, {}, {"/home/dana/code", "/srv/clients/meridian"});
}

void inFocus(DiskStorageStore& storage) {
    withFolders(storage);
    storage.setPreviewFocus(StorageLocation{"/home/dana/code", "Local folder"});
}

Storage saying(const char* message, std::vector<std::string> trash = {}) {
    return [message, trash = std::move(trash)](DiskStorageStore& storage) {
        storage.setPreview(measured(), false, {}, false, message, trash);
    };
}

Storage looking(const char* branch) {
    return [branch](DiskStorageStore& storage) {
        storage.setPreview(measured());
        storage.select(project(branch));
    };
}

Storage reviewing(const StorageProject& project) {
    return [project](DiskStorageStore& storage) {
        storage.setPreview(measured());
        storage.openReview(project);
    };
}

Touch with(std::function<void(ProjectStorageModel&)> act) {
    return [act = std::move(act)](QQuickItem& root) {
        if (auto* const model = root.findChild<ProjectStorageModel*>()) act(*model);
    };
}

void unfoldFirst(ProjectStorageModel& model) {
    const QModelIndex first = model.rows()->index(0, 0);
    model.openRow(model.rows()->data(first, Qt::UserRole).toString());
}

void tickSome(QQuickItem& root) {
    auto* const model = root.findChild<StorageReviewModel*>();
    if (!model) return;
    model->tick(QString::fromStdString(project("feature/checkout").path + "/.turbo"), false);
    model->setConfirmed(true);
}

/// The same, and the button was pressed.
void cleanSome(QQuickItem& root) {
    tickSome(root);
    if (const ViewContext* const context = ViewContext::of(qmlEngine(&root)))
        context->storage->setPreview(measured(), false, {}, true);
}

} // namespace

std::vector<Picture> storageScreens() {
    const auto onPage = [](VarnetStore& store) { store.setPage(Page::storage); };
    const auto page = [&](const QString& name, Storage storage, Touch touch = {}, QSize size = window) {
        return Picture{.name = name,
                       .view = "MainWindow",
                       .size = size,
                       .data = PreparedMachine::busy,
                       .prepare = onPage,
                       .touch = std::move(touch),
                       .storage = std::move(storage)};
    };
    const Touch family = with([](ProjectStorageModel& model) {
        model.openTile("/home/dana/code/storefront");
        unfoldFirst(model);
    });
    const Touch buckets = with([](ProjectStorageModel& model) {
        model.openTile("/home/dana/code/storefront");
        model.openTile("/home/dana/code/storefront/.claude/worktrees/checkout");
    });
    const Touch searching = with([](ProjectStorageModel& model) { model.setSearch("dark-mode"); });
    const Touch lost = with([](ProjectStorageModel& model) { model.setSearch("warehouse"); });
    const Touch small = with([](ProjectStorageModel& model) { model.openTile("small-folders"); });
    const char* const moved = "Moved 3 folders to Trash. Space is freed when you empty Trash. Reinstall "
                              "dependencies before using that project again.";
    const char* const skipped =
        "2 moved; 2 skipped. node_modules: A process is using this project. Stop its tasks, then try again.\n"
        "apps/web/.next/cache: The folder changed since the scan. Rescan before cleaning.";
    const char* const refused =
        "Choose a folder containing projects, rather than your whole disk or home folder.";
    std::vector<Picture> pictures{
        page("storage", after(measured), with(unfoldFirst)),
        page("storage-start", {}),
        page(
            "storage-start-refused",
            [refused](DiskStorageStore& storage) { storage.setPreview(nullptr, false, {}, false, refused); }),
        page("storage-finding", during(nullptr, "Finding workspaces…")),
        page("storage-scanning", during(halfway, "9/23 · api-gateway · codex/rate-limits"),
             with(unfoldFirst)),
        page("storage-stopped", after(stopped), with(unfoldFirst)),
        page("storage-nothing", after(nothing)),
        page("storage-nothing-list",
             [](DiskStorageStore& storage) {
                 storage.setPreview(nothing());
                 storage.page.listOnly = true;
             }),
        page("storage-list", inList, with(unfoldFirst)),
        page("storage-family", after(measured), family),
        page("storage-buckets", after(measured), buckets),
        page("storage-more", after(measured), small),
        page("storage-search", after(measured), searching),
        page("storage-no-match", after(measured), lost),
        page("storage-folders", withFolders,
             [](QQuickItem& root) {
                 if (QObject* const button = root.findChild<QObject*>("storageFolders"))
                     QMetaObject::invokeMethod(button, "clicked");
             }),
        page("storage-focus", inFocus),
        page("storage-moved", saying(moved, {"/home/dana/.local/share/Trash/files/node_modules"})),
        page("storage-skipped", saying(skipped, {"/home/dana/.local/share/Trash/files/.turbo"})),
        page("storage-detail-clone", looking("main")),
        page("storage-detail-worktree", looking("feature/checkout")),
        page("storage-detail-managed", looking("dana/spike")),
        page("storage-detail-partial", looking("spike/passkeys")),
        page("storage-review", reviewing(project("feature/checkout"))),
        page("storage-review-ticked", reviewing(project("feature/checkout")), tickSome),
        page("storage-review-cleaning", reviewing(project("feature/checkout")), cleanSome),
        page("storage-review-none", reviewing(bare())),
        page("storage-lengthy", after(lengthy), with(unfoldFirst)),
        page("storage-wide", after(measured), with(unfoldFirst), wideWindow),
        page("storage-wide-list", inList, with(unfoldFirst), wideWindow),
        page("storage-least", after(measured), {}, leastWindow),
        page("storage-least-tall", withFolders, with(unfoldFirst), {720, 1200}),
        page("storage-least-list", inList, with(unfoldFirst), leastWindow),
        page("storage-least-scanning", during(halfway, "9/23 · api-gateway · codex/rate-limits"), {},
             leastWindow),
        page("storage-least-start", {}, {}, leastWindow),
        page("storage-least-detail", looking("dana/spike"), {}, leastWindow),
        page("storage-least-review", reviewing(project("feature/checkout")), {}, leastWindow),
    };
    return pictures;
}

} // namespace varnet
