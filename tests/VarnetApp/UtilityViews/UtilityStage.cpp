#include "tests/VarnetApp/UtilityViews/UtilityStage.h"

#include <QQmlEngine>

namespace varnet::test {

namespace {

bool isShown(const QAccessibleInterface& one) {
    const QAccessible::State state = one.state();
    return !state.invisible && !one.rect().isEmpty();
}

QAccessibleInterface* search(QAccessibleInterface* one, QAccessible::Role role, const QString& name) {
    if (!one) return nullptr;
    if (one->role() == role && one->text(QAccessible::Name) == name && isShown(*one)) return one;
    for (int i = 0; i < one->childCount(); ++i)
        if (QAccessibleInterface* const found = search(one->child(i), role, name)) return found;
    return nullptr;
}

} // namespace

void UtilityStage::prepare(QQmlEngine& engine) {
    if (!context_) {
        flame_.emplace(store().settings());
        updater_.emplace(AppUpdater::Setup{.version = "1.3.0",
                                           .defaults = &fakes.defaults,
                                           .mainQueue = &fakes.queue,
                                           .framework = privateCopy ? nullptr : &updates});
        updater_->start();
        context_.emplace(ViewContext{.store = store(),
                                     .localization = fakes.localization,
                                     .clock = fakes.clock,
                                     .dockFlame = &*flame_,
                                     .actions = actions,
                                     .files = files,
                                     .updater = &*updater_,
                                     .cloud = cloud});
    }
    context_->give(engine);
}

void UtilityStage::renew() {
    context_.reset();
    updater_.reset();
    flame_.reset();
    fakes.open();
}

void UtilityStage::TearDown() {
    ControlStage::TearDown();
    context_.reset();
    updater_.reset();
    flame_.reset();
}

void UtilityStage::open(const QByteArray& type, QSize size) {
    show(type + " { objectName: \"view\"; anchors.fill: parent }");
    view().resize(size);
    ASSERT_TRUE(QTest::qWaitFor([&] { return item("view")->width() == size.width(); }));
    view().grabWindow(); // words that wrap find their height
    QCoreApplication::processEvents();
}

QAccessibleInterface* UtilityStage::known(QAccessible::Role role, const QString& name) const {
    return search(QAccessible::queryAccessibleInterface(&view()), role, name);
}

QQuickItem* UtilityStage::knownItem(QAccessible::Role role, const QString& name) const {
    QAccessibleInterface* const found = known(role, name);
    return found ? qobject_cast<QQuickItem*>(found->object()) : nullptr;
}

void UtilityStage::focus(QQuickItem* control) {
    ASSERT_NE(control, nullptr);
    control->forceActiveFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
}

void UtilityStage::clickOn(const QQuickItem* control) {
    ASSERT_NE(control, nullptr);
    const QPoint centre = control->mapToScene({control->width() / 2, control->height() / 2}).toPoint();
    ASSERT_TRUE(QRect({}, view().size()).contains(centre)) << "out of the window";
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, centre);
}

QString UtilityStage::focusedName() const {
    QQuickItem* const focus = view().activeFocusItem();
    QAccessibleInterface* const access = focus ? QAccessible::queryAccessibleInterface(focus) : nullptr;
    return access ? access->text(QAccessible::Name) : QString();
}

} // namespace varnet::test
