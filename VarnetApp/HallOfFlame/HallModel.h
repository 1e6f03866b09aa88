#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/HallOfFlame/HallRows.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// What the Hall of Flame shows: badges, one of two weeks, and bests.
class HallModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString since READ since NOTIFY changed)
    /// Trouble with the collection's file; empty: none.
    Q_PROPERTY(QString warning READ warning NOTIFY changed)
    /// Name of the flame's face.
    Q_PROPERTY(QString expression READ expression NOTIFY changed)

    Q_PROPERTY(QAbstractItemModel* badges READ badges CONSTANT)
    /// 0: the earned ones, 1: all.
    Q_PROPERTY(int filter READ filter WRITE setFilter NOTIFY changed)
    Q_PROPERTY(QString filterLine READ filterLine NOTIFY changed)
    Q_PROPERTY(bool noneEarned READ noneEarned NOTIFY changed)

    /// 0: this week, 1: the last one.
    Q_PROPERTY(int week READ week WRITE setWeek NOTIFY changed)
    Q_PROPERTY(QString weekTitle READ weekTitle NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* figures READ figures CONSTANT)
    /// The busiest application; empty: none was measured.
    Q_PROPERTY(QString appetiteName READ appetiteName NOTIFY changed)
    Q_PROPERTY(QString appetiteLetter READ appetiteLetter NOTIFY changed)
    Q_PROPERTY(QString appetiteFigure READ appetiteFigure NOTIFY changed)
    Q_PROPERTY(QString weekNote READ weekNote NOTIFY changed)

    Q_PROPERTY(QAbstractItemModel* bests READ bests CONSTANT)

public:
    using ViewModel::ViewModel;

    QString since() const { return since_; }
    QString warning() const { return warning_; }
    QString expression() const { return expression_; }
    QAbstractItemModel* badges() { return &badges_; }
    int filter() const { return filter_ == HallRows::Shown::all ? 1 : 0; }
    void setFilter(int filter);
    QString filterLine() const;
    bool noneEarned() const { return noneEarned_; }
    int week() const { return week_; }
    void setWeek(int week);
    QString weekTitle() const;
    QAbstractItemModel* figures() { return &figures_; }
    QString appetiteName() const { return appetiteName_; }
    QString appetiteLetter() const;
    QString appetiteFigure() const { return appetiteFigure_; }
    QString weekNote() const { return weekNote_; }
    QAbstractItemModel* bests() { return &bests_; }

signals:
    void changed();

protected:
    void begin() override;

private:
    void refresh();

    HallRows::Shown filter_ = HallRows::Shown::all;
    int week_ = 0;
    QString since_;
    QString warning_;
    QString expression_ = QStringLiteral("smug");
    bool noneEarned_ = true;
    QString appetiteName_;
    QString appetiteFigure_;
    QString weekNote_;
    KeyedListModel<BadgeRow> badges_;
    KeyedListModel<WeekRow> figures_;
    KeyedListModel<BestRow> bests_;
};

} // namespace varnet
