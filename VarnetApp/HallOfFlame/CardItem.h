#pragma once

#include "VarnetApp/HallOfFlame/CardSheetModel.h"

#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The picture that a sheet shares, as large as there is room for.
class CardItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(varnet::CardSheetModel* model READ model WRITE setModel NOTIFY modelChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    CardSheetModel* model() const { return model_; }
    void setModel(CardSheetModel* model);

    void paint(QPainter* painter) override;

signals:
    void modelChanged();

private:
    QPointer<CardSheetModel> model_;
};

} // namespace varnet
