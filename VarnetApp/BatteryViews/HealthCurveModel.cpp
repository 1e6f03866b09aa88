#include "VarnetApp/BatteryViews/HealthCurveModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/BatteryDisplay.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnet {

namespace {

constexpr double hour = 3600;
constexpr double day = 86'400;
constexpr double shownByDay = 90; ///< days up to which the axis names days, not months

} // namespace

void HealthCurveModel::begin() {
    connect(&store(), &VarnetStore::snapshotChanged, this, &HealthCurveModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &HealthCurveModel::tell);
    tell();
}

void HealthCurveModel::tell() {
    told_ = false;
    refresh();
}

void HealthCurveModel::refresh() {
    const auto snapshot = store().sharedSnapshot();
    const auto health = snapshot->battery ? snapshot->battery->archive.health : BatteryHistory().health;
    const double to = std::ceil(snapshot->date.seconds / hour) * hour;
    HealthCurve curve = healthCurve(*health, Date{to});
    if (told_ && curve.points == points_ && to == to_) return;
    told_ = true;
    points_ = std::move(curve.points);
    to_ = to;
    from_ = to - curve.days * day;
    low_ = curve.low;

    const QLocale& locale = context().localization.locale();
    labels_.clear();
    for (const BatteryHealthPoint* const point : std::as_const(curve.sources)) {
        QString label = BatteryDisplay::percent(point->capacity, locale) + " · " +
                        BatteryTexts::moment(point->date, "d MMM", locale);
        if (point->cycles) {
            const QString cycles =
                locale.toString(*point->cycles) + (*point->cycles == 1 ? " cycle" : " cycles");
            label += " · " + context().localization.text(cycles);
        }
        labels_.append(std::move(label));
    }
    gridLabels_.clear();
    for (const double value : {low_, (low_ + 100) / 2, 100.0})
        gridLabels_.append(BatteryDisplay::percent(value, locale));
    const QString format = curve.days > shownByDay ? "MMM" : "d MMM";
    timeLabels_ = {BatteryTexts::moment(Date{from_}, format, locale),
                   BatteryTexts::moment(Date{(from_ + to_) / 2}, format, locale), "Now"};
    summary_.clear();
    if (ready()) {
        summary_ = QString("Capacity: %1 on %2, %3 on %4.")
                       .arg(BatteryDisplay::percent(curve.sources.front()->capacity, locale),
                            BatteryTexts::moment(curve.sources.front()->date, "d MMM", locale),
                            BatteryDisplay::percent(curve.sources.back()->capacity, locale),
                            BatteryTexts::moment(curve.sources.back()->date, "d MMM", locale));
    }
    emit changed();
}

} // namespace varnet
