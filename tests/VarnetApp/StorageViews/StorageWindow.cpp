#include "tests/VarnetApp/StorageViews/StorageWindow.h"

#include "VarnetApp/Previews/PreparedMachine.h"

namespace varnet {

StorageWindow::~StorageWindow() {
    view.reset();
}

void StorageWindow::open(QSize size) {
    view.reset();
    monitor = std::make_unique<VarnetStore>(VarnetStore::Setup{.probes = engineProbes,
                                                               .clock = clock,
                                                               .engineQueue = jobs,
                                                               .mainQueue = main,
                                                               .localization = localization,
                                                               .storage = home.path("state"),
                                                               .user = PreparedMachine::user,
                                                               .preview = PreparedMachine::calm(),
                                                               .collaborators = {}});
    context = std::make_unique<ViewContext>(
        ViewContext{*monitor, localization, clock, nullptr, {}, nullptr, nullptr, store.get()});
    showWindow(*context, size);
    key(Qt::Key_5, Qt::ControlModifier);
    ASSERT_NE(find<ProjectStorageModel>(), nullptr);
}

void StorageWindow::openPrepared(std::shared_ptr<const StorageScan> scan, QSize size) {
    view.reset();
    make(true);
    store->setPreview(std::move(scan));
    open(size);
}

bool StorageWindow::usable(const QString& objectName) const {
    QQuickItem* const found = item(objectName);
    return found && found->isEnabled();
}

} // namespace varnet
