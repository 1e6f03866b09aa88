#include "tests/VarnetApp/MainViews/MainWindowStage.h"

namespace varnet {

MainWindowStage::~MainWindowStage() {
    view.reset();
}

void MainWindowStage::open(Snapshot snapshot, QSize size) {
    view.reset();
    store = std::make_unique<VarnetStore>(VarnetStore::Setup{.probes = probes,
                                                             .clock = clock,
                                                             .engineQueue = queue,
                                                             .mainQueue = queue,
                                                             .localization = localization,
                                                             .storage = folder.path(),
                                                             .user = PreparedMachine::user,
                                                             .preview = std::move(snapshot),
                                                             .collaborators = {}});
    context = std::make_unique<ViewContext>(ViewContext{*store, localization, clock, nullptr});
    showWindow(*context, size);
}

std::shared_ptr<MonitorSnapshot> MainWindowStage::withFindings(std::size_t count) {
    auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::manyFindings());
    if (snapshot->findings.size() > count) snapshot->findings.resize(count);
    return snapshot;
}

} // namespace varnet
