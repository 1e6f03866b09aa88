#include "VarnetApp/Components/IconItem.h"

#include "VarnetApp/Components/IconPaths.h"
#include "VarnetApp/Components/PathData.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>

namespace varnet {

namespace {

constexpr double grid = 20;

// Parsed at first use; main thread and, while the main thread waits, the render thread.
const QPainterPath& iconPath(const QString& name) {
    static QHash<QString, QPainterPath> paths;
    const auto known = paths.constFind(name);
    if (known != paths.constEnd()) return *known;
    const std::string_view data = iconPathData(name.toStdString());
    if (data.empty()) qWarning("no icon is called \"%s\"", qUtf8Printable(name));
    return *paths.insert(name, pathFromData(data));
}

} // namespace

void paintIcon(QPainter& painter, const QString& name, const QColor& color, const QPointF& at, int size) {
    if (name.isEmpty() || size <= 0) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(at);
    const double scale = size / grid;
    painter.scale(scale, scale);
    const double width = size <= 14 ? 1.25 : 1.5;
    painter.setPen(QPen(color, width / scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(iconPath(name));
    painter.restore();
}

IconItem::IconItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setImplicitSize(size_, size_);
}

void IconItem::setName(const QString& name) {
    if (name_ == name) return;
    name_ = name;
    update();
    emit nameChanged();
}

void IconItem::setColor(const QColor& color) {
    if (color_ == color) return;
    color_ = color;
    update();
    emit colorChanged();
}

void IconItem::setSize(int size) {
    if (size_ == size) return;
    size_ = size;
    setImplicitSize(size_, size_);
    update();
    emit sizeChanged();
}

void IconItem::paint(QPainter* painter) {
    paintIcon(*painter, name_, color_, {(width() - size_) / 2, (height() - size_) / 2}, size_);
}

} // namespace varnet
