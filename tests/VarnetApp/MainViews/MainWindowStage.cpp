#include "tests/VarnetApp/MainViews/MainWindowStage.h"

#include "VarnetApp/Components/Theme.h"

#include <QAccessible>
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

} // namespace

MainWindowStage::~MainWindowStage() {
    view.reset();
    qInstallMessageHandler(nullptr);
    EXPECT_TRUE(warnings().isEmpty()) << warnings().join('\n').toStdString();
}

void MainWindowStage::open(Snapshot snapshot, QSize size) {
    warnings().clear();
    qInstallMessageHandler(collect);
    Theme::shared().setReducedMotion(true);
    view.reset();
    store = std::make_unique<VarnetStore>(VarnetStore::Setup{.probes = probes,
                                                             .clock = clock,
                                                             .engineQueue = queue,
                                                             .mainQueue = queue,
                                                             .localization = localization,
                                                             .storage = folder.path(),
                                                             .preview = std::move(snapshot),
                                                             .collaborators = {}});
    context = std::make_unique<ViewContext>(ViewContext{*store, localization, clock, nullptr});
    view = std::make_unique<QQuickView>();
    context->give(*view->engine());
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->resize(size);
    view->setSource(QUrl("qrc:/qt/qml/Varnet/MainWindow.qml"));
    ASSERT_NE(view->rootObject(), nullptr);
    view->show();
    view->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
}

std::shared_ptr<MonitorSnapshot> MainWindowStage::withFindings(std::size_t count) {
    auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::manyFindings());
    if (snapshot->findings.size() > count) snapshot->findings.resize(count);
    return snapshot;
}

QQuickItem* MainWindowStage::called(const QString& name) const {
    return calledIn(*view->contentItem(), name);
}

void MainWindowStage::click(QQuickItem* item) {
    ASSERT_NE(item, nullptr);
    QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier,
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
}

void MainWindowStage::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(view.get(), key, modifiers);
}

} // namespace varnet
