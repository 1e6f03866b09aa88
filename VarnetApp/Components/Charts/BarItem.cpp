#include "VarnetApp/Components/Charts/BarItem.h"

#include "VarnetApp/Components/Charts/BarGeometry.h"

#include <QPainter>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr int growthDuration = 140; // milliseconds
constexpr double leastGrowth = 2;   // pixels; what nobody sees move is not worth nine frames

void drawBar(QPainter& painter, double length, double height, const QColor& color) {
    if (length <= 0) return;
    const double corner = std::min(length, height) / 2;
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0, 0, length, height), corner, corner);
}

} // namespace

BarItem::BarItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    growth_.setDuration(growthDuration);
    growth_.setEasingCurve(QEasingCurve::OutQuad);
    connect(&growth_, &QVariantAnimation::valueChanged, this, [this](const QVariant& at) {
        shown_ = at.toDouble();
        update();
    });
    connect(this, &BarItem::changed, this, [this] {
        if (!animated_ && growth_.state() == QAbstractAnimation::Running) {
            growth_.stop();
            shown_ = value_;
        }
        update();
    });
}

void BarItem::setValue(double value) {
    if (value_ == value || (std::isnan(value_) && std::isnan(value))) return;
    value_ = value;
    growth_.stop();
    const bool onScreen =
        isComponentComplete() && isVisible() && window() != nullptr && window()->isVisible();
    // From and to the unknown there is no length to run through: what is no number is never far enough.
    const double from = std::clamp(shown_, 0.0, 1.0);
    const double to = std::clamp(value_, 0.0, 1.0);
    if (animated_ && onScreen && std::abs(to - from) * width() >= leastGrowth) {
        growth_.setStartValue(from);
        growth_.setEndValue(to);
        growth_.start();
    } else {
        shown_ = value_;
        update();
    }
    emit valueChanged();
}

void BarItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    drawBar(*painter, width(), height(), trackColor_);
    drawBar(*painter, barLength(width(), height(), shown_), height(), color_);
}

} // namespace varnet
