#pragma once

#include <QQuickItem>
#include <QQuickView>
#include <gtest/gtest.h>

#include <memory>

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
};

} // namespace varnet
