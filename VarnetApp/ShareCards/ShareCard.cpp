#include "VarnetApp/ShareCards/ShareCard.h"

#include "VarnetApp/Components/HeadlineBreak.h"
#include "VarnetApp/Components/Palette.h"
#include "VarnetApp/Components/Typeface.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/DateTexts.h"
#include "VarnetApp/ShareCards/CardDrawing.h"

#include <algorithm>
#include <array>
#include <vector>

namespace varnet {

namespace {

constexpr double left = 64;
constexpr double right = 1136;
constexpr double wordsWidth = 740;
constexpr double explanationWidth = 680;
constexpr double ruleY = 482;

/// A figure under the rule, with what it counts.
struct Cell {
    QString figure;
    QString caption;
    QColor tone;
};

/// A headline as large as it can be: three lines at most.
struct Headline {
    QStringList lines;
    QFont font;
    double line = 0; ///< height of one
};

Headline headlineFor(const QString& words) {
    for (const int pixels : {56, 48, 40}) {
        const QFont font = typeface(pixels, QFont::DemiBold, pixels * -0.018);
        const auto text = brokenHeadline(
            words, wordsWidth, [&](const QString& piece) { return CardDrawing::width(piece, font); }, 3);
        if (text) return {text->split('\n'), font, pixels * 8.0 / 7};
    }
    const QFont font = typeface(32, QFont::DemiBold);
    return {CardDrawing::wrapped(words, font, wordsWidth, 4), font, 40};
}

std::vector<Cell> cellsOf(const ShareCardSnapshot& card, const AppLocalization& localization) {
    const Palette& palette = darkPalette();
    const auto text = [&](const char* english) { return localization.text(QString::fromUtf8(english)); };
    const Figures figures(localization.locale());
    return {
        {card.cpu, text("Whole Mac CPU"), palette.accent},
        {card.memory, text("Process memory"), palette.memory},
        {localization.text(card.fans), localization.text(card.fanDetail), palette.info},
        {figures.count(card.serverCount), text(card.serverCount == 1 ? "local server" : "local servers"),
         palette.dev},
        {figures.count(card.toolCount), text(card.toolCount == 1 ? "recognized tool" : "recognized tools"),
         palette.ember},
    };
}

void paintCells(CardDrawing& drawing, const std::vector<Cell>& cells) {
    constexpr double dotSide = 10;
    constexpr double dotRoom = 18;
    constexpr double leastGap = 40;
    QFont figureFont;
    QFont captionFont;
    std::vector<double> widths;
    double gap = 0;
    // Long words of another language make all of it a little smaller.
    for (const int pixels : {40, 36, 32, 28}) {
        figureFont = typeface(pixels, QFont::DemiBold, pixels * -0.02);
        captionFont = typeface(std::max(14, pixels * 9 / 20), QFont::Medium);
        widths.clear();
        double taken = 0;
        for (const Cell& cell : cells) {
            widths.push_back(std::max(CardDrawing::width(cell.figure, figureFont),
                                      dotRoom + CardDrawing::width(cell.caption, captionFont)));
            taken += widths.back();
        }
        gap = (right - left - taken) / static_cast<double>(cells.size() - 1);
        if (gap >= leastGap) break;
    }
    double x = left;
    for (std::size_t at = 0; at < cells.size(); ++at) {
        const Cell& cell = cells[at];
        if (at > 0) drawing.verticalRule(std::round(x - gap / 2), 516, 608);
        drawing.text(cell.figure, {x, 549}, figureFont, darkPalette().text);
        drawing.dot({x, 582}, dotSide, cell.tone);
        drawing.text(cell.caption, {x + dotRoom, 593}, captionFont, darkPalette().muted);
        x += widths[at] + gap;
    }
}

QString projectsLine(const ShareCardSnapshot& card, const AppLocalization& localization) {
    QStringList names;
    for (const std::string& name : card.projectNames)
        names.append(QString::fromStdString(name));
    return localization.text("Projects: " + names.join(", "));
}

FlameExpression faceOf(const Roast& roast) {
    return FlameFace::state(roast.mood, roast.characterTopic);
}

} // namespace

void ShareCard::paint(QPainter& painter, const ShareCardSnapshot& card, const AppLocalization& localization) {
    const Palette& palette = darkPalette();
    CardDrawing drawing(painter, size, {968, 290}, 520);

    drawing.mascot({62, 52, 40, 40}, FlameExpression::smug);
    drawing.brand(localization.text("/ MAC REPORT"), {114, 81}, 22);
    drawing.textToTheLeft(DateTexts::moment(card.date, localization.locale()), {right, 80},
                          typeface(20, QFont::Medium), palette.muted);
    drawing.mascot({800, 120, 340, 340}, faceOf(card.roast));

    const bool hasProjects = !card.projectNames.empty();
    const Headline headline = headlineFor(QString::fromStdString(card.roast.headline));
    const QFont body = typeface(24, QFont::Normal);
    const QStringList explanation =
        CardDrawing::wrapped(localization.text(QString::fromStdString(card.roast.explanation)), body,
                             explanationWidth, hasProjects && headline.lines.size() > 2 ? 1 : 2);
    constexpr double bodyLine = 34;
    const double between = 22;
    const double height = static_cast<double>(headline.lines.size()) * headline.line + between +
                          static_cast<double>(explanation.size()) * bodyLine;
    // In the middle of what is left between the brand, the projects' line and the rule.
    const double top = 108;
    const double bottom = hasProjects ? 424 : 466;
    double y = std::round(std::max(top, top + (bottom - top - height) / 2));
    const double headlineAscent = headline.line * 0.78;
    for (const QString& line : headline.lines) {
        drawing.text(line, {left, y + headlineAscent}, headline.font, palette.text);
        y += headline.line;
    }
    y += between;
    for (const QString& line : explanation) {
        drawing.text(line, {left, y + 25}, body, palette.muted);
        y += bodyLine;
    }
    if (hasProjects) {
        const QFont font = typeface(20, QFont::Medium);
        drawing.text(CardDrawing::elided(projectsLine(card, localization), font, wordsWidth), {left, 454},
                     font, palette.dev);
    }
    drawing.horizontalRule(left, right, ruleY);
    paintCells(drawing, cellsOf(card, localization));
}

QImage ShareCard::image(const ShareCardSnapshot& card, const AppLocalization& localization) {
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull()) return image;
    QPainter painter(&image);
    paint(painter, card, localization);
    return image;
}

QString ShareCard::description(const ShareCardSnapshot& card, const AppLocalization& localization) {
    QStringList parts{QString::fromStdString(card.roast.headline),
                      localization.text(QString::fromStdString(card.roast.explanation))};
    for (const Cell& cell : cellsOf(card, localization))
        parts.append(cell.figure + ' ' + cell.caption);
    if (!card.projectNames.empty()) parts.append(projectsLine(card, localization));
    return CardDrawing::sentences(parts);
}

} // namespace varnet
