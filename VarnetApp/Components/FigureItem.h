#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// A live number in one line. Every digit sits in a cell as wide as the widest digit of its font, so that a
/// ticking number does not tremble; everything else keeps its natural width. Positions are not rounded.
class FigureItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Figure)
    /// Finished words, "—" when the value is unknown.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    /// One of Theme's fonts of 11, 13, 17 or 28 pixels; the line is as high as that of words of this size.
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    Q_PROPERTY(Alignment alignment READ alignment WRITE setAlignment NOTIFY changed)

public:
    enum class Alignment { Left, Right };
    Q_ENUM(Alignment)

    explicit FigureItem(QQuickItem* parent = nullptr);

    const QString& text() const { return text_; }
    void setText(const QString& text);
    const QFont& font() const { return font_; }
    void setFont(const QFont& font);
    const QColor& color() const { return color_; }
    void setColor(const QColor& color);
    Alignment alignment() const { return alignment_; }
    void setAlignment(Alignment alignment);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    void measure();

    QString text_;
    QFont font_;
    QColor color_ = Qt::white;
    Alignment alignment_ = Alignment::Left;
    double textWidth_ = 0;
    double baseline_ = 0;
};

/// The width of a digit's cell in a font, in logical pixels.
double digitCell(const QFont& font);
/// The width of a number set in cells.
double figureWidth(const QFont& font, const QString& text);
/// Paints a number set in cells; `at` is the left end of its baseline.
void paintFigure(QPainter& painter, const QFont& font, const QColor& color, QPointF at, const QString& text);

} // namespace varnet
