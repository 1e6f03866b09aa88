#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Application/CollectionWatch.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Previews/PreparedCollection.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "probes/fake/FakeProbes.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/InlineQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <memory>

namespace varnet {

/// The main window on prepared data with a collection that goes on counting.
class HallStage : public WindowStage {
protected:
    ~HallStage() override { view.reset(); }

    void open(FlameArchive archive, Page page = Page::hall, std::filesystem::path file = {}) {
        view.reset();
        collection = std::make_unique<FlameCollectionStore>(
            FlameCollectionStore::Setup{.clock = clock,
                                        .mainQueue = queue,
                                        .writer = writer,
                                        .file = std::move(file),
                                        .prepared = std::move(archive)});
        store = std::make_unique<VarnetStore>(
            VarnetStore::Setup{.probes = probes,
                               .clock = clock,
                               .engineQueue = queue,
                               .mainQueue = queue,
                               .localization = localization,
                               .storage = folder.path(),
                               .user = PreparedMachine::user,
                               .preview = PreparedMachine::busy(),
                               .collaborators = withCollection(*collection, {})});
        store->setPage(page);
        context = std::make_unique<ViewContext>(
            ViewContext{*store, localization, clock, nullptr, {}, nullptr, collection.get()});
        showWindow(*context);
    }

    TemporaryFolder folder;
    FakeClock clock{PreparedMachine::now() + 2};
    HandQueue queue{clock};
    InlineQueue writer;
    FakeProbes probes;
    AppLocalization localization{nullptr};
    std::unique_ptr<FlameCollectionStore> collection;
    std::unique_ptr<VarnetStore> store;
    std::unique_ptr<ViewContext> context;
};

} // namespace varnet
