#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QList>
#include <QPointF>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <cstddef>

namespace varnet {

/// The machine's CPU over the last 15 minutes as a chart wants it.
class TimelineModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// Whether there are enough points for a line.
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    /// Seconds and percent; the times of the snapshots.
    Q_PROPERTY(QList<QPointF> points MEMBER points_ NOTIFY changed)
    /// "66% · 14:28:06", parallel to the points.
    Q_PROPERTY(QStringList labels MEMBER labels_ NOTIFY changed)
    Q_PROPERTY(double from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(double to MEMBER to_ NOTIFY changed)
    Q_PROPERTY(QString summary MEMBER summary_ NOTIFY changed)

public:
    static constexpr qsizetype fewestPoints = 5;
    /// Seconds: the span that is shown.
    static constexpr double span = 900;

    using ViewModel::ViewModel;

    bool ready() const noexcept { return points_.size() >= fewestPoints; }

signals:
    void changed();

protected:
    void begin() override;

private:
    void refresh();

    QList<QPointF> points_;
    QStringList labels_;
    double from_ = 0;
    double to_ = span;
    QString summary_;
};

} // namespace varnet
