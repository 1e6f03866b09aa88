#pragma once

#include "VarnetApp/Previews/PreparedCollection.h"
#include "tests/VarnetApp/MainViews/MainWindowStage.h"

namespace varnet {

/// The main window on prepared data with a collection that goes on counting.
class HallStage : public MainWindowStage {
protected:
    void open(FlameArchive archive, Page page = Page::hall, std::filesystem::path file = {}) {
        close();
        collection = std::make_unique<FlameCollectionStore>(
            FlameCollectionStore::Setup{.clock = clock,
                                        .mainQueue = queue,
                                        .writer = writer,
                                        .file = std::move(file),
                                        .prepared = std::move(archive)});
        MainWindowStage::open(PreparedMachine::busy(), {1040, 720}, page);
    }
};

} // namespace varnet
