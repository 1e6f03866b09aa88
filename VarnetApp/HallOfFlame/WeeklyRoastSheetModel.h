#pragma once

#include "VarnetApp/HallOfFlame/CardSheetModel.h"
#include "VarnetApp/ShareCards/WeeklyCard.h"

#include <QtQml/qqmlregistration.h>

namespace varnet {

/// A week's summary as it stood when it was asked for.
class WeeklyRoastSheetModel : public CardSheetModel {
    Q_OBJECT
    QML_ELEMENT

public:
    using CardSheetModel::CardSheetModel;

    /// Freezes a week. @param week 0: this one, 1: the last one
    Q_INVOKABLE void freeze(int week);
    Q_INVOKABLE void closed() { release(); }

    QSize cardSize() const override { return WeeklyCard::size; }
    void paint(QPainter& painter) const override;

protected:
    void begin() override {}
    QImage rendered() const override;
    QString described() const override;
    QString suggestedName() const override { return WeeklyCard::suggestedName; }

private:
    WeeklyCard card_;
};

} // namespace varnet
