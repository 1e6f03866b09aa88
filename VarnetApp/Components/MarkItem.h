#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The mark inside a tick box of 18: a 2 px tick, or a dash for "in part".
class MarkItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Mark)
    Q_PROPERTY(bool dash READ dash WRITE setDash NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)

public:
    explicit MarkItem(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    bool dash() const { return dash_; }
    void setDash(bool dash);
    const QColor& color() const { return color_; }
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    bool dash_ = false;
    QColor color_ = Qt::black;
};

} // namespace varnet
