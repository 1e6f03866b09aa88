#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QVariant>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace varnet {

/// What a list shows of one item. Plain values; the texts of a role are made when a delegate asks for them.
template <typename Row>
concept KeyedRow = std::equality_comparable<Row> && requires(const Row& row, int role) {
    { row.key } -> std::convertible_to<std::string>;
    { row.value(role) } -> std::same_as<QVariant>;
    { Row::roles() } -> std::same_as<std::vector<QByteArray>>; ///< role k is Qt::UserRole + k
};

/// Longest run of ascending numbers within a list of distinct ones, as flags.
std::vector<bool> longestAscendingRun(const std::vector<std::size_t>& numbers);

/// A list that is updated by comparing keys: rows are removed, moved, inserted and changed, never reset, so
/// that selection, hover, focus and scroll position survive. Main thread only.
template <KeyedRow Row>
class KeyedListModel : public QAbstractListModel {
public:
    /// More moves than this in one update are told as one change of order.
    static constexpr std::size_t singleMoves = 48;

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const int row = index.row();
        if (row < 0 || row >= rowCount() || role < Qt::UserRole) return {};
        return rows_[static_cast<std::size_t>(row)]->value(role - Qt::UserRole);
    }

    QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        int role = Qt::UserRole;
        for (const QByteArray& name : Row::roles())
            names[role++] = name;
        return names;
    }

    const Row& at(std::size_t row) const { return *rows_[row]; }
    std::size_t size() const noexcept { return rows_.size(); }
    /// -1 when no row has the key.
    int indexOf(const std::string& key) const {
        const auto found = std::ranges::find_if(rows_, [&](const auto& row) { return row->key == key; });
        return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
    }

    /// Makes the list equal to `next`. Of rows with one key the later ones get keys of their own.
    void update(std::vector<Row> next) {
        const Places places = placesOf(next);
        removeAbsent(places);
        reorder(places);
        insertMissing(places, next);
        changeContents(next);
    }

    /// Tells every row anew: what the texts are made of has changed, such as the language.
    void retell() {
        if (!rows_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    }

private:
    using Places = std::unordered_map<std::string, std::size_t>;
    using Rows = std::vector<std::unique_ptr<Row>>;

    static Places placesOf(std::vector<Row>& next) {
        Places places;
        places.reserve(next.size());
        for (std::size_t i = 0; i < next.size(); ++i) {
            while (!places.emplace(next[i].key, i).second)
                next[i].key += '\x1f';
        }
        return places;
    }

    void removeAbsent(const Places& places) {
        std::size_t end = rows_.size();
        while (end > 0) {
            if (places.contains(rows_[end - 1]->key)) {
                --end;
                continue;
            }
            std::size_t begin = end - 1;
            while (begin > 0 && !places.contains(rows_[begin - 1]->key))
                --begin;
            beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
            rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(begin),
                        rows_.begin() + static_cast<std::ptrdiff_t>(end));
            endRemoveRows();
            end = begin;
        }
    }

    void reorder(const Places& places) {
        std::vector<std::size_t> targets;
        targets.reserve(rows_.size());
        for (const auto& row : rows_)
            targets.push_back(places.at(row->key));
        if (std::ranges::is_sorted(targets)) return;
        const std::vector<bool> stays = longestAscendingRun(targets);
        const auto movers = static_cast<std::size_t>(std::ranges::count(stays, false));
        if (movers > singleMoves) {
            reorderAtOnce(targets);
        } else {
            moveSingly(std::move(targets), stays);
        }
    }

    void reorderAtOnce(const std::vector<std::size_t>& targets) {
        // Without the hint a view takes it for a reset.
        Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
        std::vector<std::size_t> order(targets.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::ranges::sort(order, {}, [&](std::size_t i) { return targets[i]; });
        Rows sorted;
        sorted.reserve(rows_.size());
        std::vector<int> movedTo(rows_.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            movedTo[order[i]] = static_cast<int>(i);
            sorted.push_back(std::move(rows_[order[i]]));
        }
        rows_ = std::move(sorted);
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex& one : before)
            after.append(index(movedTo[static_cast<std::size_t>(one.row())]));
        changePersistentIndexList(before, after);
        Q_EMIT layoutChanged({}, VerticalSortHint);
    }

    /// Each row that does not stay goes right behind the one that is to precede it.
    void moveSingly(std::vector<std::size_t> targets, const std::vector<bool>& stays) {
        std::vector<std::size_t> movers;
        for (std::size_t i = 0; i < targets.size(); ++i)
            if (!stays[i]) movers.push_back(targets[i]);
        std::ranges::sort(movers);
        std::vector<std::size_t> ascending = targets;
        std::ranges::sort(ascending);
        for (const std::size_t mover : movers) {
            const auto place = std::ranges::lower_bound(ascending, mover);
            const auto from = std::ranges::find(targets, mover) - targets.begin();
            const auto to = place == ascending.begin()
                                ? std::ptrdiff_t{0}
                                : std::ranges::find(targets, *std::prev(place)) - targets.begin() + 1;
            if (to == from || to == from + 1) continue;
            beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, static_cast<int>(to));
            rotateOne(rows_, from, to);
            rotateOne(targets, from, to);
            endMoveRows();
        }
    }

    /// Takes one element out and puts it before the one at `to`.
    static void rotateOne(auto& list, std::ptrdiff_t from, std::ptrdiff_t to) {
        const auto begin = list.begin();
        if (from < to) {
            std::rotate(begin + from, begin + from + 1, begin + to);
        } else {
            std::rotate(begin + to, begin + from, begin + from + 1);
        }
    }

    void insertMissing(const Places& places, const std::vector<Row>& next) {
        if (rows_.size() == next.size()) return;
        std::size_t at = 0;
        while (at < next.size()) {
            const std::size_t present = at < rows_.size() ? places.at(rows_[at]->key) : next.size();
            if (present == at) {
                ++at;
                continue;
            }
            // Everything up to the next row that is here already is new.
            beginInsertRows({}, static_cast<int>(at), static_cast<int>(present) - 1);
            Rows fresh;
            for (std::size_t i = at; i < present; ++i)
                fresh.push_back(std::make_unique<Row>(next[i]));
            rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(at),
                         std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
            endInsertRows();
            at = present;
        }
    }

    void changeContents(std::vector<Row>& next) {
        std::size_t i = 0;
        while (i < next.size()) {
            if (*rows_[i] == next[i]) {
                ++i;
                continue;
            }
            const std::size_t begin = i;
            for (; i < next.size() && !(*rows_[i] == next[i]); ++i)
                *rows_[i] = std::move(next[i]);
            Q_EMIT dataChanged(index(static_cast<int>(begin)), index(static_cast<int>(i) - 1));
        }
    }

    Rows rows_;
};

} // namespace varnet
