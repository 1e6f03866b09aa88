#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The eight-sided medal of a badge: filled and outlined in its tier's tone once it is earned, a dashed
/// outline until then.
class MedalItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Medal)
    Q_PROPERTY(QString icon READ icon WRITE setIcon NOTIFY changed)
    Q_PROPERTY(QColor tone READ tone WRITE setTone NOTIFY changed)
    Q_PROPERTY(bool earned READ earned WRITE setEarned NOTIFY changed)

public:
    explicit MedalItem(QQuickItem* parent = nullptr);

    const QString& icon() const { return icon_; }
    void setIcon(const QString& icon) { set(icon_, icon); }
    const QColor& tone() const { return tone_; }
    void setTone(const QColor& tone) { set(tone_, tone); }
    bool earned() const { return earned_; }
    void setEarned(bool earned) { set(earned_, earned); }

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

    QString icon_;
    QColor tone_ = Qt::white;
    bool earned_ = false;
};

} // namespace varnet
