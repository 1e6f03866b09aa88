#pragma once

#include "VarnetApp/BatteryViews/BatteryRows.h"
#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QtQml/qqmlregistration.h>

#include <cstddef>

namespace varnet {

struct BatteryDashboard;
struct BatterySession;
struct Date;

/// What the battery page shows beside its charts.
class BatteryModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// False: there is no battery and nothing is kept of one, so there is nothing to show.
    Q_PROPERTY(bool hasPage MEMBER hasPage_ NOTIFY readingsChanged)
    Q_PROPERTY(QString line MEMBER line_ NOTIFY readingsChanged)
    /// Trouble with keeping the history; empty: none.
    Q_PROPERTY(QString warning MEMBER warning_ NOTIFY readingsChanged)
    Q_PROPERTY(QString updated MEMBER updated_ NOTIFY updatedChanged)

    Q_PROPERTY(QString charge MEMBER charge_ NOTIFY readingsChanged)
    /// 0 to 1; 0 also when it is not known.
    Q_PROPERTY(double chargeShare MEMBER chargeShare_ NOTIFY readingsChanged)
    /// Name of a Theme colour.
    Q_PROPERTY(QString chargeTone MEMBER chargeTone_ NOTIFY readingsChanged)
    Q_PROPERTY(bool charging MEMBER charging_ NOTIFY readingsChanged)
    Q_PROPERTY(QString timeLabel MEMBER timeLabel_ NOTIFY readingsChanged)
    Q_PROPERTY(QString time MEMBER time_ NOTIFY readingsChanged)
    Q_PROPERTY(QString power MEMBER power_ NOTIFY readingsChanged)
    Q_PROPERTY(QAbstractItemModel* figures READ figures CONSTANT)

    // The running session or the last one.
    Q_PROPERTY(QString sessionTitle MEMBER sessionTitle_ NOTIFY sessionChanged)
    Q_PROPERTY(QString sessionAbout MEMBER sessionAbout_ NOTIFY sessionChanged)
    /// What the card says instead of apps; empty: there are some.
    Q_PROPERTY(QString sessionNotice MEMBER sessionNotice_ NOTIFY sessionChanged)
    Q_PROPERTY(QString sessionNote MEMBER sessionNote_ NOTIFY sessionChanged)
    Q_PROPERTY(QAbstractItemModel* apps READ apps CONSTANT)

    // The sessions before it, the latest first.
    Q_PROPERTY(QAbstractItemModel* sessions READ sessions CONSTANT)
    Q_PROPERTY(bool hasSessions READ hasSessions NOTIFY sessionsChanged)
    /// What the link at the list's head says; empty: there is no more to see.
    Q_PROPERTY(QString toggle MEMBER toggle_ NOTIFY sessionsChanged)
    Q_PROPERTY(bool showAllSessions READ showAllSessions WRITE setShowAllSessions NOTIFY sessionsChanged)

public:
    static constexpr std::size_t shownApps = 5;
    /// Sessions shown before the user asks for all.
    static constexpr std::size_t firstSessions = 4;

    using ViewModel::ViewModel;

    QAbstractItemModel* figures() { return &figures_; }
    QAbstractItemModel* apps() { return &apps_; }
    QAbstractItemModel* sessions() { return &sessions_; }
    bool hasSessions() const noexcept { return sessions_.size() > 0; }
    bool showAllSessions() const noexcept { return showAllSessions_; }
    void setShowAllSessions(bool shown);

    /// Tells the reading's age anew; for a clock that ticks while somebody looks.
    Q_INVOKABLE void tick();

signals:
    void readingsChanged();
    void updatedChanged();
    void sessionChanged();
    void sessionsChanged();

protected:
    void begin() override;

private:
    void refresh();
    void refreshSession(const BatteryDashboard* battery, Date now);
    void refreshSessions(const BatteryDashboard* battery, const BatterySession* shown, Date now);

    bool hasPage_ = true;
    QString line_;
    QString warning_;
    QString updated_;
    QString charge_;
    double chargeShare_ = 0;
    QString chargeTone_;
    bool charging_ = false;
    QString timeLabel_;
    QString time_;
    QString power_;
    KeyedListModel<BatteryFigure> figures_;
    QString sessionTitle_;
    QString sessionAbout_;
    QString sessionNotice_;
    QString sessionNote_;
    KeyedListModel<BatteryApp> apps_;
    KeyedListModel<BatterySessionRow> sessions_;
    QString toggle_;
    bool showAllSessions_ = false;
};

} // namespace varnet
