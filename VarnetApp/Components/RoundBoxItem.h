#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// A rounded box painted at device pixels, for small things whose outline is not a whole pixel or whose
/// corners must be smooth at any scale. Large surfaces are plain rectangles: they cost no picture of their
/// own.
class RoundBoxItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(RoundBox)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    Q_PROPERTY(QColor lineColor READ lineColor WRITE setLineColor NOTIFY changed)
    /// Logical pixels; the outline lies inside the box. 0 draws none.
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY changed)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)

public:
    explicit RoundBoxItem(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    const QColor& color() const { return color_; }
    void setColor(const QColor& color) { set(color_, color); }
    const QColor& lineColor() const { return lineColor_; }
    void setLineColor(const QColor& color) { set(lineColor_, color); }
    double lineWidth() const { return lineWidth_; }
    void setLineWidth(double width) { set(lineWidth_, width); }
    double radius() const { return radius_; }
    void setRadius(double radius) { set(radius_, radius); }

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    template <typename Value>
    void set(Value& field, const Value& value) {
        if (field == value) return;
        field = value;
        update();
        emit changed();
    }

    QColor color_ = Qt::transparent;
    QColor lineColor_ = Qt::transparent;
    double lineWidth_ = 0;
    double radius_ = 0;
};

} // namespace varnet
