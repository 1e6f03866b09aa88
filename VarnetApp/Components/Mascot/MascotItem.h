#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QQuickPaintedItem>
#include <QString>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The mascot in a view. It holds still but for one change of 240 ms when its face changes, which happens at
/// once while it is not on screen. Assistive tools pass it by unless the view names it.
class MascotItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The name of a FlameExpression. Any other name shows, and reads back as, "confused".
    Q_PROPERTY(QString expression READ expression WRITE setExpression NOTIFY expressionChanged)
    /// False changes faces at once, also one that is changing.
    Q_PROPERTY(bool animated READ animated WRITE setAnimated NOTIFY animatedChanged)

public:
    explicit MascotItem(QQuickItem* parent = nullptr);

    QString expression() const;
    void setExpression(const QString& name);
    bool animated() const { return animated_; }
    void setAnimated(bool animated);

    void paint(QPainter* painter) override;

signals:
    void expressionChanged();
    void animatedChanged();

private:
    bool onScreen() const;

    FlameExpression expression_ = FlameExpression::smug;
    FlameExpression before_ = FlameExpression::smug; ///< what the change started from
    bool animated_ = true;
    QVariantAnimation change_; ///< runs from 0 to 1
};

} // namespace varnet
