#include "tests/VarnetApp/Components/ControlStage.h"

#include "VarnetApp/Components/Theme.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <stdexcept>

namespace varnet::test {

void ControlStage::SetUp() {
    warnings_.emplace();
    Theme::shared().setDark(true);
    Theme::shared().setReducedMotion(true);
}

void ControlStage::TearDown() {
    view_.reset();
    warnings_.reset();
}

void ControlStage::show(const QByteArray& body) {
    view_ = std::make_unique<QQuickView>();
    view_->engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    prepare(*view_->engine());
    auto* const component = new QQmlComponent(view_->engine(), view_.get());
    component->setData("import QtQuick\nimport QtQuick.Templates as T\nimport Varnet\nItem {\n" + body +
                           "\n}",
                       QUrl(QStringLiteral("qrc:/stage.qml")));
    if (!component->isReady()) throw std::runtime_error(component->errorString().toStdString());
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->resize(480, 320);
    QObject* const root = component->create();
    if (root == nullptr) throw std::runtime_error(component->errorString().toStdString());
    view_->setContent(component->url(), component, root);
    view_->show();
    view_->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
}

QObject* ControlStage::object(const char* name) const {
    return view_->rootObject()->findChild<QObject*>(QLatin1String(name));
}

QQuickItem* ControlStage::item(const char* name) const {
    return qobject_cast<QQuickItem*>(object(name));
}

QPoint ControlStage::centreOf(const char* name) const {
    const QQuickItem* const found = item(name);
    return found->mapToScene({found->width() / 2, found->height() / 2}).toPoint();
}

void ControlStage::click(const char* name) {
    QTest::mouseClick(view_.get(), Qt::LeftButton, Qt::NoModifier, centreOf(name));
}

void ControlStage::hover(const QPoint& at) {
    QTest::mouseMove(view_.get(), at);
    QCoreApplication::processEvents();
}

void ControlStage::key(Qt::Key key) {
    QTest::keyClick(view_.get(), key);
}

QString ControlStage::focused() const {
    const QQuickItem* const focus = view_->activeFocusItem();
    return focus ? focus->objectName() : QString();
}

} // namespace varnet::test
