#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// A share as an arc from 12 o'clock, clockwise, on its track.
class RingItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1, cut to that; NaN when it is not known: the track alone.
    Q_PROPERTY(double value MEMBER value_ NOTIFY changed)
    /// Logical pixels.
    Q_PROPERTY(double stroke MEMBER stroke_ NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY changed)

public:
    explicit RingItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    double value_ = 0;
    double stroke_ = 9;
    QColor color_;
    QColor trackColor_;
};

} // namespace varnet
