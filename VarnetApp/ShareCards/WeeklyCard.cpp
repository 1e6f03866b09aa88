#include "VarnetApp/ShareCards/WeeklyCard.h"

#include "VarnetApp/Components/Palette.h"
#include "VarnetApp/Components/Typeface.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/DateTexts.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/ShareCards/CardDrawing.h"

#include <algorithm>
#include <array>

namespace varnet {

namespace {

constexpr double left = 72;
constexpr double right = 1008;

struct Statistic {
    QString figure;
    QString caption;
    QColor tone;
};

std::array<Statistic, 3> statisticsOf(const WeeklyCard& card, const AppLocalization& localization) {
    const Palette& palette = darkPalette();
    const Figures figures(localization.locale());
    const auto count = [&](auto number) {
        return figures.count(static_cast<std::uint64_t>(std::max<std::int64_t>(number, 0)));
    };
    return {{{count(card.stops), localization.text("servers stopped"), palette.warn},
             {figures.fileSize(card.trashBytes), localization.text("moved to Trash"), palette.accent},
             {count(card.badges), localization.text("badges earned"), palette.memory}}};
}

/// It is proud of what was done, and takes a week without deeds as it comes.
FlameExpression faceOf(const WeeklyCard& card) {
    if (card.badges > 0) return FlameExpression::delighted;
    return card.stops > 0 || card.trashBytes > 0 ? FlameExpression::wink : FlameExpression::sleepy;
}

} // namespace

WeeklyCard::WeeklyCard(const FlameWeek& week, const FlameCalendar& calendar,
                       const AppLocalization& localization, bool ofSamples)
    : dates(DateTexts::week({week.start, week.end}, calendar, localization.locale())), stops(week.stops()),
      trashBytes(week.trashBytes()), badges(week.badges), example(ofSamples) {}

void WeeklyCard::paint(QPainter& painter, const AppLocalization& localization) const {
    const Palette& palette = darkPalette();
    CardDrawing drawing(painter, size, {852, 250}, 540);

    drawing.brand(localization.text("/ WEEKLY ROAST"), {left, 95}, 24);
    drawing.mascot({692, 76, 316, 316}, faceOf(*this));
    // Two sentences, a line each.
    const QString title = localization.text("Your week. Lightly roasted.");
    const qsizetype end = title.indexOf(' ', title.indexOf('.'));
    QFont display = typeface(72, QFont::DemiBold, -1.4);
    const QStringList lines{title.left(end), title.mid(end + 1)};
    for (const int pixels : {72, 64, 56, 48}) {
        display = typeface(pixels, QFont::DemiBold, pixels * -0.02);
        const auto widest = [&](const QString& line) { return CardDrawing::width(line, display); };
        if (std::max(widest(lines[0]), widest(lines[1])) <= 610) break;
    }
    drawing.text(lines[0], {left - 2, 224}, display, palette.text);
    drawing.text(lines[1], {left - 2, 306}, display, palette.text);
    drawing.text(dates, {left, 371}, typeface(26, QFont::Normal), palette.muted);

    double y = 424;
    const QFont figure = typeface(96, QFont::DemiBold, -2);
    for (const Statistic& statistic : statisticsOf(*this, localization)) {
        drawing.horizontalRule(left, right, y);
        drawing.text(statistic.figure, {left, y + 123}, figure, statistic.tone);
        drawing.textToTheLeft(statistic.caption, {right, y + 123}, typeface(36, QFont::Medium), palette.text);
        y += 172;
    }
    drawing.horizontalRule(left, right, y);
    drawing.text(localization.text("Measured folder sizes. Not guaranteed space freed."), {left, y + 55},
                 typeface(24, QFont::Normal), palette.muted);
    if (example) drawing.tag(localization.text("Example"), {right, y + 54}, 22);
}

QImage WeeklyCard::image(const AppLocalization& localization) const {
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) return image;
    QPainter painter(&image);
    paint(painter, localization);
    return image;
}

QString WeeklyCard::description(const AppLocalization& localization) const {
    QStringList parts{localization.text("Your week. Lightly roasted."), dates};
    for (const Statistic& statistic : statisticsOf(*this, localization))
        parts.append(statistic.figure + ' ' + statistic.caption);
    return CardDrawing::sentences(parts);
}

} // namespace varnet
