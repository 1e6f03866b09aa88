#pragma once

#include "VarnetCore/Hall/FlameWeek.h"

#include <QImage>
#include <QPainter>
#include <QSize>
#include <QString>

namespace varnet {

class AppLocalization;

/// One week of a collection as a picture to post. It has no names in it, of whatever.
struct WeeklyCard {
    static constexpr QSize size{1080, 1080};
    static constexpr const char* suggestedName = "My-week-lightly-roasted.png";

    QString dates; ///< "17–23 November 2025"
    std::int64_t stops = 0;
    std::uint64_t trashBytes = 0;
    int badges = 0;
    bool example = false; ///< made of sample data, and says so

    WeeklyCard() = default;
    /// @param calendar of the collection
    WeeklyCard(const FlameWeek& week, const FlameCalendar& calendar, const AppLocalization& localization,
               bool ofSamples);

    /// Paints in units of the finished picture's pixels.
    void paint(QPainter& painter, const AppLocalization& localization) const;
    /// The finished picture; null when there is no memory for it.
    QImage image(const AppLocalization& localization) const;
    /// What it shows, for those who do not see it.
    QString description(const AppLocalization& localization) const;
};

} // namespace varnet
