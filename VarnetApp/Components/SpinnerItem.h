#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// What a spinner looks like at one moment: a ring with a bright arc, or three dots of which some are filled.
/// Painted anew for every step, because a turned item loses its smooth edges.
class SpinnerItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(SpinnerFrame)
    /// Turns since the start; only the fraction matters.
    Q_PROPERTY(double turn READ turn WRITE setTurn NOTIFY changed)
    Q_PROPERTY(bool dots READ dots WRITE setDots NOTIFY changed)
    /// How many of the three dots are filled.
    Q_PROPERTY(int filled READ filled WRITE setFilled NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)
    Q_PROPERTY(QColor track READ track WRITE setTrack NOTIFY changed)

public:
    explicit SpinnerItem(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    double turn() const { return turn_; }
    void setTurn(double turn) { set(turn_, turn); }
    bool dots() const { return dots_; }
    void setDots(bool dots) { set(dots_, dots); }
    int filled() const { return filled_; }
    void setFilled(int filled) { set(filled_, filled); }
    const QColor& color() const { return color_; }
    void setColor(const QColor& color) { set(color_, color); }
    const QColor& track() const { return track_; }
    void setTrack(const QColor& track) { set(track_, track); }

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

    double turn_ = 0;
    bool dots_ = false;
    int filled_ = 0;
    QColor color_ = Qt::white;
    QColor track_ = Qt::gray;
};

} // namespace varnet
