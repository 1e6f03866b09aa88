#include "VarnetApp/BatteryViews/ChargeCurveModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/BatteryDisplay.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnet {

namespace {

constexpr double day = 86'400;

/// The chart moves on by so many seconds, about a pixel: nothing is drawn anew in between.
double stepOf(bool week) {
    return week ? 600 : 60;
}

} // namespace

void ChargeCurveModel::begin() {
    connect(&store(), &VarnetStore::snapshotChanged, this, &ChargeCurveModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &ChargeCurveModel::tell);
    tell();
}

void ChargeCurveModel::setWeek(bool week) {
    if (week == week_) return;
    week_ = week;
    tell();
}

/// Everything anew: the words have changed.
void ChargeCurveModel::tell() {
    curve_ = {};
    labels_.clear();
    to_ = 0;
    refresh();
}

void ChargeCurveModel::refresh() {
    const auto snapshot = store().sharedSnapshot();
    const auto points = snapshot->battery ? snapshot->battery->archive.points : BatteryHistory().points;
    const double step = stepOf(week_);
    const double to = std::ceil(snapshot->date.seconds / step) * step;
    if (points == source_ && to == to_) return;
    // Until the new curve stands, the old one points into the old list.
    const auto before = std::exchange(source_, points);
    to_ = to;
    from_ = to - (week_ ? 7 * day : day);
    const ChargeCurve old = std::exchange(
        curve_, chargeCurve(*points, Date{from_}, Date{to_}, std::min(snapshot->date, Date{to_})));

    const AppLocalization& localization = context().localization;
    const QLocale& locale = localization.locale();
    const QString format = week_ ? "ddd HH:mm" : "HH:mm";
    QStringList labels;
    labels.reserve(curve_.points.size());
    // Both ascend in time, and nearly all of it was there a minute ago.
    qsizetype known = 0;
    for (const BatteryPoint* const point : std::as_const(curve_.sources)) {
        while (known < old.sources.size() && old.sources[known]->date < point->date)
            ++known;
        const bool same = known < old.sources.size() && *old.sources[known] == *point;
        labels.append(same ? labels_[known]
                           : BatteryDisplay::percent(point->charge, locale) + " · " +
                                 BatteryTexts::moment(point->date, format, locale) + " · " +
                                 localization.text(BatteryTexts::state(point->state)));
    }
    labels_ = std::move(labels);

    timeLabels_.clear();
    const int parts = week_ ? 7 : 4;
    for (int part = 0; part < parts; ++part) {
        const Date at{from_ + (to_ - from_) * part / parts};
        timeLabels_.append(BatteryTexts::moment(at, week_ ? "ddd" : "HH:mm", locale));
    }
    timeLabels_.append("Now");

    notice_ = points->empty() ? "Building your charge curve…"
              : week_         ? "Nothing was measured in the last 7 days."
                              : "Nothing was measured in the last 24 hours.";
    if (curve_.points.size() == 1) notice_ = "Building your charge curve…";
    summary_.clear();
    if (ready()) {
        const auto [lowest, highest] = std::ranges::minmax_element(
            curve_.sources, {}, [](const BatteryPoint* one) { return one->charge; });
        const auto told = [&](const BatteryPoint* point) {
            return BatteryDisplay::percent(point->charge, locale) + " at " +
                   BatteryTexts::moment(point->date, format, locale);
        };
        summary_ = QString("Last charge: %1. Highest: %2. Lowest: %3.")
                       .arg(told(curve_.sources.back()), told(*highest), told(*lowest));
    }
    emit changed();
}

} // namespace varnet
