#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Hall/FlameArchive.h"
#include "VarnetCore/Hall/FlameWeek.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <string>
#include <string_view>
#include <vector>

namespace varnet {

QString shownText(std::string_view text);

/// A badge as the page shows it.
struct BadgeRow {
    std::string key; ///< the badge's id
    bool earned = false;
    double progress = 0; ///< 0 to 1

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const BadgeRow&, const BadgeRow&) = default;
};

/// One of the week's figures.
struct WeekRow {
    std::string key;
    QString label;
    QString icon;
    QString tone;
    QString figure;
    QString note;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const WeekRow&, const WeekRow&) = default;
};

/// A personal best, or what stands where there is none yet.
struct BestRow {
    std::string key; ///< the record's id
    QString title;
    QString icon;
    QString tone;
    QString figure; ///< empty: no record
    QString line;   ///< whose it is, or that there is none; may be empty
    QString detail;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const BestRow&, const BestRow&) = default;
};

/// What the page shows of a collection: English sentences and finished figures.
namespace HallRows {

enum class Shown { earned, all };

std::vector<BadgeRow> badges(const FlameArchive& archive, Shown shown);
std::vector<WeekRow> week(const FlameWeek& week, const Figures& figures);
std::vector<BestRow> bests(const FlameArchive& archive, const Figures& figures);

} // namespace HallRows
} // namespace varnet
