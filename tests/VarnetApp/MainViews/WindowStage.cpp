#include "tests/VarnetApp/MainViews/WindowStage.h"

#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QTest>

namespace varnet {

namespace {

QStringList& warnings() {
    static QStringList list;
    return list;
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    if (QByteArrayView(context.category).startsWith("qt.qpa") || text.startsWith("QStandardPaths")) return;
    warnings().append(text);
}

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
    qInstallMessageHandler(nullptr);
    EXPECT_TRUE(warnings().isEmpty()) << warnings().join('\n').toStdString();
}

void WindowStage::showWindow(ViewContext& context, QSize size) {
    warnings().clear();
    qInstallMessageHandler(collect);
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
