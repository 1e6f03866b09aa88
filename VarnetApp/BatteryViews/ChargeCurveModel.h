#pragma once

#include "VarnetApp/BatteryViews/BatteryCurves.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

namespace varnet {

/// The charge over the last day or the last week as a chart wants it.
class ChargeCurveModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// The week, instead of the day.
    Q_PROPERTY(bool week READ week WRITE setWeek NOTIFY changed)
    /// Whether there is a line to show; else the notice says why not.
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    Q_PROPERTY(QString notice MEMBER notice_ NOTIFY changed)
    Q_PROPERTY(QList<QPointF> points READ points NOTIFY changed)
    /// "76% · 07:50 · Charging", parallel to the points. Too many to be put into
    /// the user's language one by one in the view: they are already.
    Q_PROPERTY(QStringList labels MEMBER labels_ NOTIFY changed)
    Q_PROPERTY(QList<int> starts READ starts NOTIFY changed)
    Q_PROPERTY(QList<QPointF> charging READ charging NOTIFY changed)
    Q_PROPERTY(QList<QPointF> missing READ missing NOTIFY changed)
    Q_PROPERTY(double from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(double to MEMBER to_ NOTIFY changed)
    Q_PROPERTY(QStringList timeLabels MEMBER timeLabels_ NOTIFY changed)
    Q_PROPERTY(QString summary MEMBER summary_ NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool week() const noexcept { return week_; }
    void setWeek(bool week);
    bool ready() const { return curve_.points.size() > 1; }
    const QList<QPointF>& points() const { return curve_.points; }
    const QList<int>& starts() const { return curve_.starts; }
    const QList<QPointF>& charging() const { return curve_.charging; }
    const QList<QPointF>& missing() const { return curve_.missing; }

signals:
    void changed();

protected:
    void begin() override;

private:
    void refresh();
    void tell();

    bool week_ = false;
    std::shared_ptr<const std::vector<BatteryPoint>> source_; ///< what the curve was made of
    ChargeCurve curve_;
    QStringList labels_;
    double from_ = 0;
    double to_ = 1;
    QStringList timeLabels_;
    QString summary_;
    QString notice_;
};

} // namespace varnet
