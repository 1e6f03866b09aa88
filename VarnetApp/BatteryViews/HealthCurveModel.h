#pragma once

#include "VarnetApp/BatteryViews/BatteryCurves.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The capacity's daily estimates as a chart wants them.
class HealthCurveModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    Q_PROPERTY(QList<QPointF> points READ points NOTIFY changed)
    /// "91% · 14 Nov · 214 cycles", parallel to the points. Too many to be put into
    /// the user's language one by one in the view: they are already.
    Q_PROPERTY(QStringList labels MEMBER labels_ NOTIFY changed)
    Q_PROPERTY(double gap READ gap CONSTANT)
    Q_PROPERTY(double from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(double to MEMBER to_ NOTIFY changed)
    Q_PROPERTY(double low MEMBER low_ NOTIFY changed)
    Q_PROPERTY(QStringList gridLabels MEMBER gridLabels_ NOTIFY changed)
    Q_PROPERTY(QStringList timeLabels MEMBER timeLabels_ NOTIFY changed)
    Q_PROPERTY(QString summary MEMBER summary_ NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool ready() const { return !points_.isEmpty(); }
    const QList<QPointF>& points() const { return points_; }
    static constexpr double gap() { return HealthCurve::longestStep; }

signals:
    void changed();

protected:
    void begin() override;

private:
    void refresh();
    void tell();

    bool told_ = false;
    QList<QPointF> points_;
    QStringList labels_;
    double from_ = 0;
    double to_ = 1;
    double low_ = 80;
    QStringList gridLabels_;
    QStringList timeLabels_;
    QString summary_;
};

} // namespace varnet
