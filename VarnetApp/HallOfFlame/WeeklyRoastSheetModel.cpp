#include "VarnetApp/HallOfFlame/WeeklyRoastSheetModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/HallOfFlame/ShownWeek.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetCore/Base/Clock.h"

namespace varnet {

void WeeklyRoastSheetModel::freeze(int week) {
    const FlameArchive archive = context().collection ? context().collection->archive() : FlameArchive();
    card_ = WeeklyCard(shownWeek(archive, context().clock.now(), week == 1), archive.calendar(),
                       context().localization, store().isPreview());
    rebuild();
}

QString WeeklyRoastSheetModel::described() const {
    return card_.description(context().localization);
}

void WeeklyRoastSheetModel::paint(QPainter& painter) const {
    card_.paint(painter, context().localization);
}

QImage WeeklyRoastSheetModel::rendered() const {
    return card_.image(context().localization);
}

} // namespace varnet
