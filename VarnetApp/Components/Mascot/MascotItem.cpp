#include "VarnetApp/Components/Mascot/MascotItem.h"

#include "VarnetApp/Components/Mascot/MascotPainter.h"
#include "VarnetApp/Components/PainterScale.h"

#include <QQuickWindow>

namespace varnet {

namespace {

constexpr int changeDuration = 240; // milliseconds

QString nameOf(FlameExpression expression) {
    const std::string_view name = rawValue(expression);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

} // namespace

MascotItem::MascotItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    change_.setStartValue(0.0);
    change_.setEndValue(1.0);
    change_.setDuration(changeDuration);
    change_.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&change_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(this, &QQuickItem::visibleChanged, this, [this] {
        if (!isVisible()) change_.stop();
    });
}

QString MascotItem::expression() const {
    return nameOf(expression_);
}

bool MascotItem::onScreen() const {
    return isComponentComplete() && isVisible() && window() != nullptr && window()->isVisible();
}

void MascotItem::setExpression(const QString& name) {
    const FlameExpression next = flameExpression(name.toStdString()).value_or(FlameExpression::confused);
    if (next == expression_) return;
    const bool running = change_.state() == QAbstractAnimation::Running;
    // A change that has not reached its half still shows where it came from, and goes on to the new face.
    const bool goesOn = running && change_.currentValue().toDouble() < .5;
    if (!goesOn) before_ = expression_;
    expression_ = next;
    if (!animated_ || !onScreen()) {
        change_.stop();
    } else if (!goesOn) {
        change_.stop();
        change_.start();
    }
    update();
    emit expressionChanged();
}

void MascotItem::setAnimated(bool animated) {
    if (animated_ == animated) return;
    animated_ = animated;
    if (!animated_ && change_.state() == QAbstractAnimation::Running) {
        change_.stop();
        update();
    }
    emit animatedChanged();
}

void MascotItem::paint(QPainter* painter) {
    const QRectF box(0, 0, width(), height());
    const double ratio = painterScale(*painter);
    if (change_.state() == QAbstractAnimation::Running) {
        paintMascotChange(*painter, box, before_, expression_, change_.currentValue().toDouble(), ratio);
    } else {
        paintMascot(*painter, box, expression_, ratio);
    }
}

} // namespace varnet
