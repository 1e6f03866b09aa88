#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Shares of one whole side by side; what is left over is track.
class StackedBarItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Parts of 1 from the left. Nothing is drawn for a share that is not above zero.
    Q_PROPERTY(QList<double> values MEMBER values_ NOTIFY changed)
    /// Parallel to the values; a value without a colour is not drawn.
    Q_PROPERTY(QList<QColor> colors MEMBER colors_ NOTIFY changed)
    Q_PROPERTY(QColor trackColor MEMBER trackColor_ NOTIFY changed)
    /// Logical pixels.
    Q_PROPERTY(double radius MEMBER radius_ NOTIFY changed)

public:
    explicit StackedBarItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QList<double> values_;
    QList<QColor> colors_;
    QColor trackColor_;
    double radius_ = 4;
};

} // namespace varnet
