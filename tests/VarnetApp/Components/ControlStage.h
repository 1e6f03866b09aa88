#pragma once

#include "tests/VarnetApp/Components/QmlWarnings.h"

#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace varnet::test {

/// A window of 480 by 320 with a piece of QML in it, driven by real key and mouse events. QML warnings fail
/// the test.
class ControlStage : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Shows `body` as the children of an Item; `Varnet`, `QtQuick` and the templates as `T` are imported.
    void show(const QByteArray& body);
    /// Gives the engine what the shown views reach for.
    virtual void prepare(QQmlEngine&) {}
    /// The item or popup with this objectName.
    QObject* object(const char* name) const;
    QQuickItem* item(const char* name) const;
    QPoint centreOf(const char* name) const;

    void click(const char* name);
    void hover(const QPoint& at);
    void key(Qt::Key key);
    /// The objectName of what holds the keyboard.
    QString focused() const;

    QQuickView& view() const { return *view_; }

private:
    std::optional<QmlWarnings> warnings_;
    std::unique_ptr<QQuickView> view_;
};

} // namespace varnet::test
