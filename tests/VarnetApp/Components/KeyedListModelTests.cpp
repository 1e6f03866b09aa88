#include "VarnetApp/Components/KeyedListModel.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace varnet {
namespace {

struct Row {
    std::string key;
    int figure = 0;

    bool operator==(const Row&) const = default;
    QVariant value(int role) const { return role == 0 ? QVariant(QString::fromStdString(key)) : figure; }
    static std::vector<QByteArray> roles() { return {"name", "figure"}; }
};

using Model = KeyedListModel<Row>;

std::vector<Row> rows(const std::string& keys) {
    std::vector<Row> list;
    for (const char key : keys)
        list.push_back({std::string(1, key), 0});
    return list;
}

std::string keysOf(const Model& model) {
    std::string keys;
    for (std::size_t i = 0; i < model.size(); ++i)
        keys += model.at(i).key;
    return keys;
}

/// What a list made of one update.
struct Changes {
    int removed = 0, moved = 0, inserted = 0, changed = 0, relaid = 0;

    explicit Changes(const Model& model) {
        QObject::connect(&model, &Model::rowsRemoved, [this] { ++removed; });
        QObject::connect(&model, &Model::rowsMoved, [this] { ++moved; });
        QObject::connect(&model, &Model::rowsInserted, [this] { ++inserted; });
        QObject::connect(&model, &Model::dataChanged, [this] { ++changed; });
        QObject::connect(&model, &Model::layoutChanged, [this] { ++relaid; });
        QObject::connect(&model, &Model::modelReset, [] { FAIL() << "a list is never reset"; });
    }
};

TEST(KeyedListModel, tellsNoMoreThanWhatHasChanged) {
    struct Case {
        const char* name;
        const char* before;
        const char* after;
        int removed, moved, inserted;
    };
    const Case cases[] = {
        {"the same again", "abc", "abc", 0, 0, 0},
        {"the last becomes the first", "abcde", "eabcd", 0, 1, 0},
        {"the first becomes the last", "abcde", "bcdea", 0, 1, 0},
        {"two neighbours swap", "abcd", "acbd", 0, 1, 0},
        {"a run goes, at once", "abcdef", "af", 1, 0, 0},
        {"a run comes, at once", "af", "abcdef", 0, 0, 1},
        {"from nothing", "", "abc", 0, 0, 1},
        {"to nothing", "abc", "", 1, 0, 0},
        {"all of it together", "abcdef", "xfbydz", 3, 1, 3},
        {"backwards", "abcd", "dcba", 0, 3, 0},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        Model model;
        model.update(rows(one.before));
        const Changes changes(model);
        model.update(rows(one.after));
        EXPECT_EQ(keysOf(model), one.after);
        EXPECT_EQ(changes.removed, one.removed);
        EXPECT_EQ(changes.moved, one.moved);
        EXPECT_EQ(changes.inserted, one.inserted);
        EXPECT_EQ(changes.changed, 0);
    }
}

TEST(KeyedListModel, aChangedFigureTouchesItsRowAlone) {
    Model model;
    model.update(rows("abcd"));
    std::vector<Row> next = rows("abcd");
    next[2].figure = 7;
    int first = -1, last = -1;
    QObject::connect(&model, &Model::dataChanged, [&](const QModelIndex& from, const QModelIndex& to) {
        first = from.row();
        last = to.row();
    });
    model.update(next);
    EXPECT_EQ(first, 2);
    EXPECT_EQ(last, 2);
}

TEST(KeyedListModel, rowsWithOneKeyAllStay) {
    Model model;
    model.update(rows("aab"));
    EXPECT_EQ(model.size(), 3U);
    model.update(rows("baa"));
    EXPECT_EQ(model.size(), 3U);
}

TEST(KeyedListModel, staysWholeUnderRandomUpdatesAndKeepsHoldOfItsRows) {
    std::mt19937 random(7);
    Model model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::vector<Row> all;
    for (int i = 0; i < 150; ++i)
        all.push_back({std::to_string(i), i});
    for (int turn = 0; turn < 60; ++turn) {
        std::vector<Row> next = all;
        // Now and then everything changes place, mostly a few rows do.
        if (turn % 10 == 0) {
            std::ranges::shuffle(next, random);
        } else {
            for (int swap = 0; swap < 5; ++swap)
                std::swap(next[random() % next.size()], next[random() % next.size()]);
        }
        next.resize(100 + random() % 50);
        const QPersistentModelIndex held = model.index(3);
        const QVariant name = held.data(Qt::UserRole);
        model.update(next);
        ASSERT_EQ(model.size(), next.size());
        for (std::size_t i = 0; i < next.size(); ++i)
            ASSERT_EQ(model.at(i), next[i]);
        if (held.isValid()) {
            EXPECT_EQ(held.data(Qt::UserRole), name);
        }
        all = next;
        for (int i = static_cast<int>(all.size()); i < 150; ++i)
            all.push_back({"new" + std::to_string(turn) + "." + std::to_string(i), i});
    }
}

} // namespace
} // namespace varnet
