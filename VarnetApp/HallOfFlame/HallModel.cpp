#include "VarnetApp/HallOfFlame/HallModel.h"

#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/HallOfFlame/ShownWeek.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/DateTexts.h"
#include "VarnetApp/MainViews/RowTile.h"
#include "VarnetCore/Base/Clock.h"

#include <algorithm>

namespace varnet {

void HallModel::begin() {
    if (const FlameCollectionStore* const collection = context().collection) {
        connect(collection, &FlameCollectionStore::collectionChanged, this, &HallModel::refresh);
        connect(collection, &FlameCollectionStore::warningChanged, this, &HallModel::refresh);
    }
    connect(&context().localization, &AppLocalization::languageChanged, this, &HallModel::refresh);
    refresh();
}

void HallModel::setFilter(int filter) {
    filter_ = filter == 0 ? HallRows::Shown::earned : HallRows::Shown::all;
    refresh();
}

void HallModel::setWeek(int week) {
    week_ = std::clamp(week, 0, 1);
    refresh();
}

QString HallModel::filterLine() const {
    return filter_ == HallRows::Shown::all ? "Every legend starts somewhere."
                                           : "Evidence of good behaviour. Mostly.";
}

QString HallModel::weekTitle() const {
    return week_ == 0 ? "This week, on your Mac." : "Last week, on your Mac.";
}

QString HallModel::appetiteLetter() const {
    return tileFor(RowKind::application, appetiteName_).letter;
}

void HallModel::refresh() {
    static const FlameArchive nothing;
    const FlameCollectionStore* const collection = context().collection;
    const FlameArchive& archive = collection ? collection->archive() : nothing;
    const Figures figures(context().localization.locale());
    badges_.update(HallRows::badges(archive, filter_));
    bests_.update(HallRows::bests(archive, figures));
    const FlameWeek week = shownWeek(archive, context().clock.now(), week_ == 1);
    figures_.update(HallRows::week(week, figures));

    const FlameRecord* const top = week.topApp();
    appetiteName_ = top ? QString::fromStdString(top->label) : QString();
    appetiteFigure_ = top ? figures.share(top->value) : QString();
    weekNote_ = "Only time this app was monitoring is included. Weeks follow " +
                QString::fromStdString(archive.timezone) +
                ". CPU measures activity, not temperature. Trash totals count measured folder sizes, not "
                "disk space freed.";
    since_ = "All local. Collected since " +
             DateTexts::day(archive.started, archive.calendar(), context().localization.locale()) +
             ". No streaks to lose.";
    warning_ = collection ? collection->warning() : QString();
    noneEarned_ = archive.unlocked.empty();
    expression_ = !warning_.isEmpty() ? "confused" : noneEarned_ ? "smug" : "delighted";
    emit changed();
}

} // namespace varnet
