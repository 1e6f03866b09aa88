#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

namespace varnet {

/// What the pictures to share are drawn with. Lengths are pixels of the finished picture; the painter may be
/// scaled. Always the dark appearance: a picture has no window around it to agree with.
class CardDrawing {
public:
    /// Fills the ground and lights it.
    /// @param light where the mascot's light comes from
    CardDrawing(QPainter& painter, QSize size, QPointF light, double radius);

    void text(const QString& words, QPointF baseline, const QFont& font, const QColor& color);
    /// @param baseline its right end
    void textToTheLeft(const QString& words, QPointF baseline, const QFont& font, const QColor& color);
    /// "VARNET" and what kind of picture it is. @param baseline of the first letter
    void brand(const QString& kind, QPointF baseline, int pixels);
    void horizontalRule(double from, double to, double y);
    void verticalRule(double x, double from, double to);
    void dot(QPointF corner, double side, const QColor& color);
    /// Small words in a rounded outline whose right end is at `right`.
    void tag(const QString& words, QPointF right, int pixels);
    void mascot(const QRectF& box, FlameExpression expression);

    /// Whole words in lines of this width; what is left over in the last one is cut.
    static QStringList wrapped(const QString& words, const QFont& font, double width, int most);
    static double width(const QString& words, const QFont& font);
    /// What a picture says, one sentence after the other, for those who do not see it.
    static QString sentences(const QStringList& parts);
    static QString elided(const QString& words, const QFont& font, double width);

private:
    QPainter& painter_;
    const double scale_; ///< device pixels of one of the picture's
};

} // namespace varnet
