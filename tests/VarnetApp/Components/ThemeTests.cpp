#include "VarnetApp/Components/FigureItem.h"
#include "VarnetApp/Components/Palette.h"
#include "VarnetApp/Components/Theme.h"
#include "tests/VarnetApp/Components/ControlStage.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <algorithm>
#include <cmath>

namespace varnet::test {

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](float part) {
        const double value = static_cast<double>(part);
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

struct Pair {
    std::string name;
    QColor ink;
    QColor ground;
    double least;
};

std::vector<Pair> pairsOf(const Palette& p) {
    const std::vector<std::pair<std::string, QColor>> words{
        {"text", p.text}, {"muted", p.muted}, {"ember", p.ember},   {"good", p.good}, {"warn", p.warn},
        {"bad", p.bad},   {"info", p.info},   {"memory", p.memory}, {"dev", p.dev},   {"link", p.link}};
    const std::vector<std::pair<std::string, QColor>> grounds{
        {"bg", p.bg}, {"surface", p.surface}, {"raised", p.raised}};
    std::vector<Pair> pairs{
        {"ink on the primary button", p.accentInk, p.accent, 4.5},
        {"neutral pill", p.text, p.track, 4.5},
        {"unselected segment", p.muted, p.bed, 4.5},
        {"selected segment", p.text, p.segment, 4.5},
        {"bar on its bed", p.emberFill, p.track, 3},
        {"focus ring", p.accent, p.bg, 3},
    };
    for (const auto& [groundName, ground] : grounds) {
        for (const auto& [name, ink] : words) {
            pairs.push_back({name + " on " + groundName, ink, ground, 4.5});
        }
        pairs.push_back({"text on a hovered " + groundName, p.text, over(ground, p.hover), 4.5});
        pairs.push_back({"muted on a pressed " + groundName, p.muted, over(ground, p.press), 4.5});
        for (const QColor& tone : {p.memory, p.warn, p.ember, p.good, p.bad}) {
            const std::string tint = "a tint of " + tone.name().toStdString() + " on " + groundName;
            pairs.push_back({tint, tintTextOf(p, tone), over(ground, tintOf(p, tone)), 4.5});
        }
    }
    for (const QColor& tone : {p.info, p.memory, p.good, p.accent, p.bad, p.ember, p.dev})
        pairs.push_back({"a tile of " + tone.name().toStdString(), tileInkOf(p, tone), tileOf(p, tone), 4.5});
    return pairs;
}

} // namespace

TEST(ThemeTests, wordsCanBeReadOnEveryGround) {
    for (const Palette* palette : {&darkPalette(), &lightPalette()}) {
        for (const Pair& pair : pairsOf(*palette)) {
            EXPECT_GE(contrast(pair.ink, pair.ground), pair.least)
                << (palette->dark ? "dark: " : "light: ") << pair.name;
        }
    }
}

TEST(ThemeTests, oneInstanceServesEveryEngineAndOutlivesThem) {
    for (int run = 0; run < 2; ++run) {
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Varnet\nQtObject { property color ground: Theme.bg }", {});
        const std::unique_ptr<QObject> object(component.create());
        ASSERT_NE(object, nullptr) << component.errorString().toStdString();
        for (const bool dark : {false, true}) {
            Theme::shared().setDark(dark);
            EXPECT_EQ(object->property("ground").value<QColor>(), Theme::shared().bg()) << "run " << run;
        }
    }
}

TEST(ThemeTests, reducedMotionLeavesNoDuration) {
    Theme& theme = Theme::shared();
    theme.setReducedMotion(false);
    EXPECT_GT(theme.hoverDuration(), 0);
    theme.setReducedMotion(true);
    EXPECT_EQ(theme.hoverDuration() + theme.slideDuration() + theme.sheetDuration() + theme.scrimDuration() +
                  theme.faceDuration(),
              0);
}

TEST(ThemeTests, tickingNumbersKeepTheirWidth) {
    const Theme& theme = Theme::shared();
    struct Row {
        const char* name;
        const char* narrow;
        const char* wide;
    };
    for (const Row& row : {Row{"ones are narrow", "11.1%", "88.8%"}, Row{"unit behind", "1.1 GB", "4.6 GB"},
                           Row{"thousands", "1,111 RPM", "2,840 RPM"}}) {
        for (const QFont& font : {theme.caption(), theme.body(), theme.title(), theme.display()}) {
            EXPECT_DOUBLE_EQ(figureWidth(font, QLatin1String(row.narrow)),
                             figureWidth(font, QLatin1String(row.wide)))
                << row.name << " at " << font.pixelSize();
        }
    }
    EXPECT_GT(figureWidth(theme.body(), QStringLiteral("—")), 0);
    EXPECT_EQ(figureWidth(theme.body(), QString()), 0);
}

} // namespace varnet::test
