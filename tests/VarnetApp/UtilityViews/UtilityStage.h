#pragma once

#include "VarnetApp/Application/DockFlame.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/Updates/AppUpdater.h"
#include "tests/VarnetApp/AppStore/StoreOnFakes.h"
#include "tests/VarnetApp/Components/ControlStage.h"
#include "tests/VarnetApp/Updates/FakeUpdateFramework.h"

#include <QAccessible>

#include <optional>

namespace varnet::test {

/// A view of its own window on a store over fakes.
class UtilityStage : public ControlStage {
protected:
    void prepare(QQmlEngine& engine) override;
    void TearDown() override;

    /// Shows the view; its objectName is "view". A second call is a second opening.
    void open(const QByteArray& type, QSize size);
    /// The store is remade with what `fakes` now says.
    void renew();

    /// What a screen reader knows by this role and name; null when nothing on screen is called so.
    QAccessibleInterface* known(QAccessible::Role role, const QString& name) const;
    QQuickItem* knownItem(QAccessible::Role role, const QString& name) const;
    void focus(QQuickItem* control);
    void clickOn(const QQuickItem* control);
    /// The name of what holds the keyboard, as a screen reader says it.
    QString focusedName() const;

    VarnetStore& store() { return *fakes.store; }
    AppUpdater& updater() { return *updater_; }

    StoreOnFakes fakes;
    ViewActions actions;
    FakeUpdateFramework updates;
    bool privateCopy = false; ///< there are no updates for it
    CloudStore* cloud = nullptr;
    platform::FileOpening* files = nullptr;

private:
    std::optional<DockFlame> flame_;
    std::optional<AppUpdater> updater_;
    std::optional<ViewContext> context_;
};

} // namespace varnet::test
