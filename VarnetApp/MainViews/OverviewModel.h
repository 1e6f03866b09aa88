#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/MainViews/BlockNotice.h"
#include "VarnetApp/MainViews/OverviewRows.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnet {

class Figures;
struct Finding;
struct MonitorSnapshot;

/// What the overview shows of the published snapshot and of the flame's present line.
class OverviewModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    // The hero.
    Q_PROPERTY(QString headline MEMBER headline_ NOTIFY roastChanged)
    Q_PROPERTY(QString explanation MEMBER explanation_ NOTIFY roastChanged)
    Q_PROPERTY(QStringList observations MEMBER observations_ NOTIFY roastChanged)
    /// The flame's face, by the name of a FlameExpression.
    Q_PROPERTY(QString expression MEMBER expression_ NOTIFY roastChanged)
    Q_PROPERTY(QString cpu MEMBER cpu_ NOTIFY readingsChanged)
    /// 0 to 1; 0 also when it is not known.
    Q_PROPERTY(double cpuFraction MEMBER cpuFraction_ NOTIFY readingsChanged)
    Q_PROPERTY(QString thermal MEMBER thermal_ NOTIFY readingsChanged)
    /// Names of Theme's colours.
    Q_PROPERTY(QString thermalTone MEMBER thermalTone_ NOTIFY readingsChanged)
    Q_PROPERTY(QString updated MEMBER updated_ NOTIFY updatedChanged)

    Q_PROPERTY(QAbstractItemModel* metrics READ metrics CONSTANT)

    // Contributors: while the notice has a title, there are none.
    Q_PROPERTY(varnet::BlockNotice contributorsNotice MEMBER contributorsNotice_ NOTIFY readingsChanged)
    Q_PROPERTY(QAbstractItemModel* categories READ categories CONSTANT)
    /// Shares of the whole machine, parallel to the categories.
    Q_PROPERTY(QList<double> shares MEMBER shares_ NOTIFY readingsChanged)
    Q_PROPERTY(QAbstractItemModel* contributors READ contributors CONSTANT)

    // Attention: while the notice has a title, there is nothing.
    Q_PROPERTY(varnet::BlockNotice attentionNotice MEMBER attentionNotice_ NOTIFY attentionChanged)
    Q_PROPERTY(QAbstractItemModel* findings READ findings CONSTANT)
    /// What the link at the block's head says; empty: there is no more to see.
    Q_PROPERTY(QString toggle MEMBER toggle_ NOTIFY attentionChanged)
    Q_PROPERTY(bool showAllFindings READ showAllFindings WRITE setShowAllFindings NOTIFY attentionChanged)

public:
    /// Findings shown before the user asks for all.
    static constexpr std::size_t firstFindings = 2;
    static constexpr std::size_t busiestGroups = 4;

    using ViewModel::ViewModel;

    QAbstractItemModel* metrics() { return &metrics_; }
    QAbstractItemModel* categories() { return &categories_; }
    QAbstractItemModel* contributors() { return &contributors_; }
    QAbstractItemModel* findings() { return &findings_; }
    bool showAllFindings() const noexcept { return showAllFindings_; }
    void setShowAllFindings(bool shown);

    /// Tells the sample's age anew; for a clock that ticks while somebody looks.
    Q_INVOKABLE void tick();
    /// Opens what a card reads; cards that no page stands behind do nothing.
    Q_INVOKABLE void openMetric(const QString& name);
    Q_INVOKABLE void openSources();
    Q_INVOKABLE void inspectGroup(const QString& key);
    Q_INVOKABLE void inspectFinding(const QString& key);
    Q_INVOKABLE void ignoreFinding(const QString& key);

signals:
    void roastChanged();
    void readingsChanged();
    void updatedChanged();
    void attentionChanged();

protected:
    void begin() override;

private:
    void refresh();
    void refreshRoast();
    void refreshMetrics(const MonitorSnapshot& snapshot, const Figures& figures);
    void refreshContributors(const MonitorSnapshot& snapshot);
    void refreshAttention(const MonitorSnapshot& snapshot);
    const Finding* findingOf(const QString& key) const;

    QString headline_;
    QString explanation_;
    QStringList observations_;
    QString expression_;
    QString cpu_;
    double cpuFraction_ = 0;
    QString thermal_;
    QString thermalTone_;
    QString updated_;
    KeyedListModel<MetricEntry> metrics_;
    BlockNotice contributorsNotice_;
    KeyedListModel<CategoryEntry> categories_;
    QList<double> shares_;
    KeyedListModel<ContributorEntry> contributors_;
    BlockNotice attentionNotice_;
    KeyedListModel<AttentionEntry> findings_;
    QString toggle_;
    bool showAllFindings_ = false;
};

} // namespace varnet
