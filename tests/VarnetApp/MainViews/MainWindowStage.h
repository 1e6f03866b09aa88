#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/MainViews/OverviewModel.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "probes/fake/FakeProbes.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/InlineQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <memory>

namespace varnet {

/// The main window on prepared data.
class MainWindowStage : public WindowStage {
protected:
    using Snapshot = std::shared_ptr<const MonitorSnapshot>;

    ~MainWindowStage() override;

    /// With the stores that are made by then.
    void open(Snapshot snapshot, QSize size = {1040, 720}, Page page = Page::overview);
    /// Ends the window and all stores; a stage whose members they use does so in its destructor.
    void close();
    /// The busy machine with so many findings, and what else `change` does to it.
    static std::shared_ptr<MonitorSnapshot> withFindings(std::size_t count);

    TemporaryFolder folder;
    FakeClock clock{PreparedMachine::now() + 2};
    HandQueue queue{clock};
    FakeProbes probes;
    InlineQueue writer;
    AppLocalization localization{nullptr};
    platform::FileOpening* files = nullptr;
    std::unique_ptr<FlameCollectionStore> collection;
    std::unique_ptr<DiskStorageStore> storage;
    std::unique_ptr<VarnetStore> store;
    std::unique_ptr<ViewContext> context;
};

} // namespace varnet
