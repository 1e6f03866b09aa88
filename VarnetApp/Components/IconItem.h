#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// One icon of the set, stroked in one colour at device pixels. Icons of 14 pixels and less get a finer
/// stroke.
class IconItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Icon)
    /// An unknown name draws nothing and is logged once; an empty one draws nothing.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Side length in logical pixels.
    Q_PROPERTY(int size READ size WRITE setSize NOTIFY sizeChanged)

public:
    explicit IconItem(QQuickItem* parent = nullptr);

    const QString& name() const { return name_; }
    void setName(const QString& name);
    const QColor& color() const { return color_; }
    void setColor(const QColor& color);
    int size() const { return size_; }
    void setSize(int size);

    void paint(QPainter* painter) override;

signals:
    void nameChanged();
    void colorChanged();
    void sizeChanged();

private:
    QString name_;
    QColor color_ = Qt::white;
    int size_ = 16;
};

/// Strokes an icon into a square whose top left corner is `at`. Used by painters that draw icons among
/// other things.
void paintIcon(QPainter& painter, const QString& name, const QColor& color, const QPointF& at, int size);

} // namespace varnet
