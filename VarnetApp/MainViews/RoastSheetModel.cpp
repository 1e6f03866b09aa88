#include "VarnetApp/MainViews/RoastSheetModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"

namespace varnet {

void RoastSheetModel::begin() {
    connect(&store(), &VarnetStore::showRoastChanged, this, &RoastSheetModel::refresh);
    refresh();
}

void RoastSheetModel::refresh() {
    // What is closing keeps its words until it has gone.
    if (!store().showRoast() || !store().frozenRoast()) return;
    const Roast& roast = *store().frozenRoast();
    headline_ = QString::fromStdString(roast.headline);
    explanation_ = QString::fromStdString(roast.explanation);
    observations_.clear();
    for (const std::string& fact : roast.observations)
        observations_.append(QString::fromStdString(fact));
    const std::string_view face = rawValue(FlameFace::state(roast.mood, roast.characterTopic));
    expression_ = QString::fromUtf8(face.data(), static_cast<qsizetype>(face.size()));
    emit changed();
}

} // namespace varnet
