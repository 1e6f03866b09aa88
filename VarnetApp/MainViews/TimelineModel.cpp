#include "VarnetApp/MainViews/TimelineModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/MainViews/OverviewTexts.h"

#include <utility>

namespace varnet {

void TimelineModel::begin() {
    connect(&store(), &VarnetStore::snapshotChanged, this, &TimelineModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, [this] {
        points_.clear(); // so that no label is taken over
        refresh();
    });
    refresh();
}

void TimelineModel::refresh() {
    const MonitorSnapshot& snapshot = store().snapshot();
    const Figures figures(context().localization.locale());
    QList<QPointF> points;
    QStringList labels;
    points.reserve(static_cast<qsizetype>(snapshot.history.size()));
    labels.reserve(points.capacity());
    // Both lists ascend in time, and nearly all of a history was there a moment ago.
    qsizetype known = 0;
    for (const CPUPoint& point : snapshot.history) {
        const QPointF at(point.date.seconds, point.value);
        while (known < points_.size() && points_[known].x() < at.x())
            ++known;
        const bool same = known < points_.size() && points_[known] == at;
        labels.append(same
                          ? labels_[known]
                          : figures.wholePercent(point.value) + " · " + OverviewTexts::timeOfDay(point.date));
        points.append(at);
    }
    if (points == points_ && snapshot.date.seconds == to_) return;
    points_ = std::move(points);
    labels_ = std::move(labels);
    to_ = snapshot.date.seconds;
    from_ = to_ - span;
    summary_ = ready() ? OverviewTexts::timeline(snapshot.history, figures) : QString();
    emit changed();
}

} // namespace varnet
