#include "VarnetApp/MainViews/ActivityListModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"

#include <algorithm>
#include <utility>

namespace varnet {

namespace {

constexpr double busiestShare = 0.82;

template <typename Value>
bool assign(Value& field, Value value) {
    if (field == value) return false;
    field = std::move(value);
    return true;
}

} // namespace

double barShare(std::optional<double> value, double busiest) noexcept {
    if (!value || !(busiest > 0)) return 0;
    return std::clamp(*value / busiest, 0.0, 1.0) * busiestShare;
}

ActivityListModel::ActivityListModel(QObject* parent) : ViewModel(parent) {}

void ActivityListModel::begin() {
    selection_.setStopping(store().stopping());
    telling_ = {Figures(context().localization.locale()), store().sort()};
    connect(&store(), &VarnetStore::snapshotChanged, this, &ActivityListModel::refresh);
    connect(&store(), &VarnetStore::selectionChanged, this, &ActivityListModel::refresh);
    connect(&store(), &VarnetStore::filterChanged, this, &ActivityListModel::follow);
    connect(&selection_, &ListSelection::changed, this, &ActivityListModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, [this] {
        telling_.figures = Figures(context().localization.locale());
        rows_.retell();
        refresh();
    });
    refresh();
    emit sortChanged();
}

/// The filter has changed, and with it maybe what the columns show.
void ActivityListModel::follow() {
    const bool sorted = telling_.sort != store().sort();
    telling_.sort = store().sort();
    refresh();
    if (!sorted) return;
    rows_.retell();
    emit sortChanged();
}

void ActivityListModel::refresh() {
    if (refreshing_) return;
    refreshing_ = true;
    ListTexts::Head head = ListTexts::head(page());
    if (head.headline != head_.headline) {
        head_ = std::move(head);
        emit headChanged();
    }
    Contents shown = contents();
    const bool failed = store().snapshot().error.has_value();
    if (failed) {
        shown.rows.clear();
        shown.candidates.clear();
    }
    const QString count = failed ? Figures::unknown() : telling_.figures.count(shown.rows.size());
    if (assign(note_, ListTexts::note(count))) emit noteChanged();
    selection_.setCandidates(std::move(shown.candidates));
    tick(shown.rows);

    std::optional<ListTexts::Notice> notice;
    if (failed) {
        notice = ListTexts::unavailable();
    } else if (shown.rows.empty()) {
        notice = ListTexts::empty(page(), shown.filtered);
    }
    const bool moved = notice.has_value() != notice_.has_value() ||
                       (notice && (notice->title != notice_->title || notice->text != notice_->text));
    rows_.update(std::move(shown.rows));
    if (moved) {
        notice_ = std::move(notice);
        emit noticeChanged();
    }
    const int agentIndex = std::max(0, static_cast<int>(shown.agents.indexOf(store().agentFilter())));
    if (assign(agents_, std::move(shown.agents)) | assign(agentIndex_, agentIndex)) emit agentsChanged();
    refreshing_ = false;
}

void ActivityListModel::tick(std::vector<ActivityRow>& rows) const {
    if (selection_.count() == 0) return;
    for (ActivityRow& row : rows)
        row.ticked = selection_.contains(row.key);
}

int ActivityListModel::sortIndex() const {
    return static_cast<int>(telling_.sort);
}

bool ActivityListModel::figuresSorted() const {
    return telling_.sort != SortOrder::name;
}

bool ActivityListModel::memoryFirst() const {
    return telling_.sort == SortOrder::memory;
}

void ActivityListModel::sortBy(int index) {
    if (index < 0 || index >= static_cast<int>(sortOrderNames.size())) return;
    store().setSortName(QString::fromLatin1(sortOrderNames[static_cast<std::size_t>(index)].data()));
}

void ActivityListModel::chooseAgent(int index) {
    if (index >= 0 && index < agents_.size()) store().setAgentFilter(agents_.at(index));
}

QString ActivityListModel::keyAt(int row) const {
    if (row < 0 || row >= rows_.rowCount()) return {};
    return QString::fromStdString(rows_.at(static_cast<std::size_t>(row)).key);
}

} // namespace varnet
