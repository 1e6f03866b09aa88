#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// A bar with round ends on its track, as high as the item. Its length follows a new value in 140 ms, at once
/// while the bar is not on screen or has less than two pixels to go.
class BarItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1, cut to that; NaN when it is not known: the track alone.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(bool animated MEMBER animated_ NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY changed)

public:
    explicit BarItem(QQuickItem* parent = nullptr);

    double value() const { return value_; }
    void setValue(double value);

    void paint(QPainter* painter) override;

signals:
    void valueChanged();
    void changed();

private:
    double value_ = 0;
    double shown_ = 0; ///< where the length is on its way to value_
    bool animated_ = true;
    QColor color_;
    QColor trackColor_;
    QVariantAnimation growth_;
};

} // namespace varnet
