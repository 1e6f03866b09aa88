#include "tests/VarnetApp/MainViews/WindowStage.h"

#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/MainViews/ActivityListModel.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QTest>

namespace varnet {

namespace {

QQuickItem* calledIn(QQuickItem& item, const QString& name) {
    if (!item.isVisible()) return nullptr;
    if (QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(&item))
        if (access->text(QAccessible::Name) == name && access->role() != QAccessible::Client) return &item;
    for (QQuickItem* const child : item.childItems())
        if (QQuickItem* const found = calledIn(*child, name)) return found;
    return nullptr;
}

QQuickItem* namedIn(QQuickItem& item, const QString& name) {
    if (!item.isVisible()) return nullptr;
    if (item.objectName() == name) return &item;
    for (QQuickItem* const child : item.childItems())
        if (QQuickItem* const found = namedIn(*child, name)) return found;
    return nullptr;
}

} // namespace

WindowStage::~WindowStage() {
    view.reset();
}

void WindowStage::showWindow(ViewContext& context, QSize size) {
    warnings_.emplace();
    Theme::shared().setReducedMotion(true);
    view = std::make_unique<QQuickView>();
    context.give(*view->engine());
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->resize(size);
    view->setSource(QUrl("qrc:/qt/qml/Varnet/MainWindow.qml"));
    ASSERT_NE(view->rootObject(), nullptr);
    view->show();
    view->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
}

QQuickItem* WindowStage::called(const QString& name) const {
    return calledIn(*view->contentItem(), name);
}

QQuickItem* WindowStage::item(const QString& objectName) const {
    // Rows are made, and made over, when the view is next laid out.
    (void)view->grabWindow();
    QQuickItem* found = nullptr;
    (void)QTest::qWaitFor([&] { return (found = namedIn(*view->contentItem(), objectName)) != nullptr; },
                          300);
    return found;
}

QQuickItem* WindowStage::rowOf(std::int32_t pid) const {
    auto* const model = find<ActivityListModel>();
    const QString part = ':' + QString::number(pid) + ':';
    for (int row = 0; row < model->rows()->rowCount(); ++row)
        if (model->keyAt(row).contains(part)) return item(model->keyAt(row));
    return nullptr;
}

QQuickItem* WindowStage::partOf(QQuickItem* whole, const QString& beginning) {
    if (!whole || whole->property("label").toString().startsWith(beginning)) return whole;
    for (QQuickItem* const child : whole->childItems())
        if (QQuickItem* const found = partOf(child, beginning)) return found;
    return nullptr;
}

bool WindowStage::isGone(const QString& objectName) const {
    return QTest::qWaitFor([&] { return namedIn(*view->contentItem(), objectName) == nullptr; }, 1000);
}

void WindowStage::click(QQuickItem* item) {
    ASSERT_NE(item, nullptr);
    // What was asked for before is laid out first, as it would be before anybody's eyes.
    (void)view->grabWindow();
    QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier,
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
}

void WindowStage::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(view.get(), key, modifiers);
}

} // namespace varnet
