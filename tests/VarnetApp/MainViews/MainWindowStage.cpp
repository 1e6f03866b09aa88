#include "tests/VarnetApp/MainViews/MainWindowStage.h"

#include "VarnetApp/Application/CollectionWatch.h"

namespace varnet {

MainWindowStage::~MainWindowStage() {
    close();
}

void MainWindowStage::open(Snapshot snapshot, QSize size, Page page) {
    view.reset();
    store = std::make_unique<VarnetStore>(VarnetStore::Setup{
        .probes = probes,
        .clock = clock,
        .engineQueue = queue,
        .mainQueue = queue,
        .localization = localization,
        .storage = folder.path(),
        .user = PreparedMachine::user,
        .preview = std::move(snapshot),
        .collaborators = collection ? withCollection(*collection, {}) : StoreCollaborators{}});
    store->setPage(page);
    context = std::make_unique<ViewContext>(ViewContext{.store = *store,
                                                        .localization = localization,
                                                        .clock = clock,
                                                        .files = files,
                                                        .collection = collection.get(),
                                                        .storage = storage.get()});
    showWindow(*context, size);
}

void MainWindowStage::close() {
    view.reset();
    context.reset();
    store.reset();
    storage.reset();
    collection.reset();
}

std::shared_ptr<MonitorSnapshot> MainWindowStage::withFindings(std::size_t count) {
    auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::manyFindings());
    if (snapshot->findings.size() > count) snapshot->findings.resize(count);
    return snapshot;
}

} // namespace varnet
