#include "VarnetApp/HallOfFlame/CardItem.h"

#include <QPainter>

namespace varnet {

void CardItem::setModel(CardSheetModel* model) {
    if (model == model_) return;
    if (model_) disconnect(model_, nullptr, this, nullptr);
    model_ = model;
    if (model_) connect(model_, &CardSheetModel::changed, this, [this] { update(); });
    update();
    emit modelChanged();
}

void CardItem::paint(QPainter* painter) {
    if (!model_ || !model_->ready() || width() <= 0) return;
    // Painted at this size instead of shrunk: words stay crisp on every screen.
    const double scale = width() / model_->cardSize().width();
    painter->scale(scale, scale);
    model_->paint(*painter);
}

} // namespace varnet
