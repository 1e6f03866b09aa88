#pragma once

#include <QColor>
#include <QPointF>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The light that the mascot throws on its card. Painted once for a size and kept by the scene graph; lay it
/// inside the card's outline.
class GlowItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    /// Alpha at the centre, 0 to 1.
    Q_PROPERTY(double strength READ strength WRITE setStrength NOTIFY changed)
    /// Lengths in logical pixels.
    Q_PROPERTY(QPointF center READ center WRITE setCenter NOTIFY changed)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)
    Q_PROPERTY(double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY changed)

public:
    explicit GlowItem(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    const QColor& color() const { return color_; }
    void setColor(const QColor& color) { set(color_, color); }
    double strength() const { return strength_; }
    void setStrength(double strength) { set(strength_, strength); }
    QPointF center() const { return center_; }
    void setCenter(QPointF center) { set(center_, center); }
    double radius() const { return radius_; }
    void setRadius(double radius) { set(radius_, radius); }
    double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius) { set(cornerRadius_, radius); }

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

    QColor color_{0xFF, 0x7A, 0x45};
    double strength_ = .22;
    QPointF center_;
    double radius_ = 340;
    double cornerRadius_ = 11;
};

} // namespace varnet
