#include "VarnetApp/HallOfFlame/RoastSheetModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"

namespace varnet {

void RoastSheetModel::begin() {
    connect(&store(), &VarnetStore::showRoastChanged, this, [this] {
        includeProjects_ = false;
        refresh();
    });
    connect(&context().localization, &AppLocalization::languageChanged, this, &RoastSheetModel::refresh);
    refresh();
}

void RoastSheetModel::refresh() {
    if (!store().showRoast() || !store().frozenRoast() || !store().roastSnapshot()) {
        // What is closing keeps its looks until it has gone.
        release();
        return;
    }
    card_ = ShareCardSnapshot(*store().roastSnapshot(), *store().frozenRoast(),
                              includeProjects_ ? ProjectNames::included : ProjectNames::left,
                              Figures(context().localization.locale()));
    rebuild();
}

void RoastSheetModel::setIncludeProjects(bool include) {
    if (include == includeProjects_) return;
    includeProjects_ = include;
    refresh();
}

QString RoastSheetModel::described() const {
    return ShareCard::description(card_, context().localization);
}

void RoastSheetModel::paint(QPainter& painter) const {
    ShareCard::paint(painter, card_, context().localization);
}

QImage RoastSheetModel::rendered() const {
    return ShareCard::image(card_, context().localization);
}

} // namespace varnet
