#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/MainViews/OverviewModel.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <gtest/gtest.h>

#include <memory>

namespace varnet {

/// The main window on prepared data, driven by real keys and clicks. QML's warnings fail the test.
class MainWindowStage : public testing::Test {
protected:
    using Snapshot = std::shared_ptr<const MonitorSnapshot>;

    ~MainWindowStage() override;

    void open(Snapshot snapshot, QSize size = {1040, 720});
    /// The busy machine with so many findings, and what else `change` does to it.
    static std::shared_ptr<MonitorSnapshot> withFindings(std::size_t count);

    /// The one shown item whose accessible name is this; null: none.
    QQuickItem* called(const QString& name) const;
    void click(QQuickItem* item);
    void clickOn(const QString& name) { click(called(name)); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    template <typename Object>
    Object* find() const {
        return view->rootObject()->findChild<Object*>();
    }

    TemporaryFolder folder;
    FakeClock clock{PreparedMachine::now() + 2};
    HandQueue queue{clock};
    FakeProbes probes;
    AppLocalization localization{nullptr};
    std::unique_ptr<VarnetStore> store;
    std::unique_ptr<ViewContext> context;
    std::unique_ptr<QQuickView> view;
};

} // namespace varnet
