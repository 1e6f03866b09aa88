#pragma once

#include "tests/VarnetApp/Components/QmlWarnings.h"

#include <QQuickItem>
#include <QQuickView>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace varnet {

struct ViewContext;

/// The main window driven by real keys and clicks. QML's warnings fail the test.
class WindowStage : public testing::Test {
protected:
    ~WindowStage() override;

    /// @param context outlives the window
    void showWindow(ViewContext& context, QSize size = {1040, 720});

    /// The one shown item whose accessible name is this; null: none.
    QQuickItem* called(const QString& name) const;
    /// The one whose object name is this.
    QQuickItem* item(const QString& objectName) const;
    /// The row of a process in the list; null: none.
    QQuickItem* rowOf(std::int32_t pid) const;
    /// What is part of an item, or it itself, and has a label that begins so; null: nothing.
    static QQuickItem* partOf(QQuickItem* whole, const QString& beginning);
    /// Whether it has gone, or goes within a moment: popups take one to close.
    bool isGone(const QString& objectName) const;
    void click(QQuickItem* item);
    void clickOn(const QString& name) { click(called(name)); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    template <typename Object>
    Object* find() const {
        return view->rootObject()->findChild<Object*>();
    }

    std::unique_ptr<QQuickView> view;

private:
    std::optional<test::QmlWarnings> warnings_;
};

} // namespace varnet
