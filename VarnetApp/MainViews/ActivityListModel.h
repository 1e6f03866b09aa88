#pragma once

#include "VarnetApp/BatchActions/ListSelection.h"
#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/MainViews/ActivityRow.h"
#include "VarnetApp/MainViews/ListTexts.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// Stands behind a page with a list: its head, its tools, its selection and its rows. Main thread only.
class ActivityListModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("each page has a kind of its own")
    Q_PROPERTY(QString headline READ headline NOTIFY headChanged)
    Q_PROPERTY(QString line READ line NOTIFY headChanged)
    Q_PROPERTY(QString searchPrompt READ searchPrompt NOTIFY headChanged)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    /// There is something in the list; else the notice stands in its place.
    Q_PROPERTY(bool hasRows READ hasRows NOTIFY noticeChanged)
    Q_PROPERTY(QString noticeIcon READ noticeIcon NOTIFY noticeChanged)
    Q_PROPERTY(QString noticeTitle READ noticeTitle NOTIFY noticeChanged)
    Q_PROPERTY(QString noticeText READ noticeText NOTIFY noticeChanged)
    Q_PROPERTY(bool noticeIsError READ noticeIsError NOTIFY noticeChanged)
    /// What the list can be sorted by, and by what it is.
    Q_PROPERTY(QStringList sortTitles READ sortTitles CONSTANT)
    Q_PROPERTY(int sortIndex READ sortIndex NOTIFY sortChanged)
    /// Heads of the two columns of figures: the sorted one comes first.
    Q_PROPERTY(QString primaryHead READ primaryHead NOTIFY sortChanged)
    Q_PROPERTY(QString secondaryHead READ secondaryHead NOTIFY sortChanged)
    Q_PROPERTY(bool figuresSorted READ figuresSorted NOTIFY sortChanged)
    Q_PROPERTY(bool memoryFirst READ memoryFirst NOTIFY sortChanged)
    /// Those who started something in the list, "All agents" first; empty: the list is not told by agents.
    Q_PROPERTY(QStringList agents READ agents NOTIFY agentsChanged)
    Q_PROPERTY(int agentIndex READ agentIndex NOTIFY agentsChanged)
    Q_PROPERTY(varnet::ListSelection* selection READ selection CONSTANT)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)

public:
    explicit ActivityListModel(QObject* parent = nullptr);

    const QString& headline() const { return head_.headline; }
    const QString& line() const { return head_.line; }
    const QString& searchPrompt() const { return head_.searchPrompt; }
    const QString& note() const { return note_; }
    bool hasRows() const { return !notice_; }
    QString noticeIcon() const { return notice_ ? notice_->icon : QString(); }
    QString noticeTitle() const { return notice_ ? notice_->title : QString(); }
    QString noticeText() const { return notice_ ? notice_->text : QString(); }
    bool noticeIsError() const { return notice_ && notice_->isError; }
    QStringList sortTitles() const { return {"CPU", "Memory", "Name"}; }
    int sortIndex() const;
    QString primaryHead() const { return memoryFirst() ? "Memory" : "CPU"; }
    QString secondaryHead() const { return memoryFirst() ? "CPU" : "Memory"; }
    bool figuresSorted() const;
    bool memoryFirst() const;
    const QStringList& agents() const { return agents_; }
    int agentIndex() const { return agentIndex_; }
    ListSelection* selection() { return &selection_; }
    QAbstractItemModel* rows() { return &rows_; }

    /// Sorts by one of `sortTitles`, or by the column at this place.
    Q_INVOKABLE void sortBy(int index);
    Q_INVOKABLE void sortByPrimary() { sortBy(memoryFirst() ? 1 : 0); }
    Q_INVOKABLE void sortBySecondary() { sortBy(memoryFirst() ? 0 : 1); }
    Q_INVOKABLE void chooseAgent(int index);
    Q_INVOKABLE virtual void open(const QString& key) = 0;
    Q_INVOKABLE virtual void stop(const QString& key) = 0;
    Q_INVOKABLE int indexOf(const QString& key) const { return rows_.indexOf(key.toStdString()); }
    Q_INVOKABLE QString keyAt(int row) const;

signals:
    void headChanged();
    void noteChanged();
    void noticeChanged();
    void sortChanged();
    void agentsChanged();

protected:
    /// What a subclass makes of the published snapshot.
    struct Contents {
        std::vector<ActivityRow> rows; ///< with everything but `ticked`
        ListSelection::Candidates candidates;
        QStringList agents; ///< as the property; empty: none
        bool filtered = false;
    };

    void begin() override;
    virtual Page page() const = 0;
    virtual Contents contents() = 0;

    const RowTelling& telling() const { return telling_; }
    /// Shows the snapshot anew.
    void refresh();

private:
    void follow();
    void tick(std::vector<ActivityRow>& rows) const;

    RowTelling telling_{Figures(QLocale::c()), SortOrder::cpu};
    ListTexts::Head head_;
    QString note_;
    std::optional<ListTexts::Notice> notice_ = ListTexts::Notice{};
    QStringList agents_;
    int agentIndex_ = 0;
    ListSelection selection_;
    KeyedListModel<ActivityRow> rows_;
    bool refreshing_ = false;
};

/// How long the bar of a figure is among those of its list, 0 to 1. The busiest leaves some room, so that it
/// does not look like a limit reached.
/// @param busiest the largest figure of the list
double barShare(std::optional<double> value, double busiest) noexcept;

} // namespace varnet
