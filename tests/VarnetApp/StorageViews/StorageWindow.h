#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/StorageViews/ProjectStorageModel.h"
#include "probes/fake/FakeProbes.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"
#include "tests/VarnetApp/StorageStore/StorageStoreFixture.h"

#include <memory>

namespace varnet {

/// The main window on its storage page, over a real home or over prepared data.
class StorageWindow : public WindowStage, protected StorageMachine {
protected:
    ~StorageWindow() override;

    void open(QSize size = {1040, 720});
    /// On prepared data.
    void openPrepared(std::shared_ptr<const StorageScan> scan, QSize size = {1040, 720});
    ProjectStorageModel& page() const { return *find<ProjectStorageModel>(); }
    /// Whether an item of this object name is shown and can be used.
    bool usable(const QString& objectName) const;
    void press(const QString& objectName) { click(item(objectName)); }

    FakeProbes engineProbes;
    AppLocalization localization{nullptr};
    std::unique_ptr<VarnetStore> monitor;
    std::unique_ptr<ViewContext> context;
};

} // namespace varnet
