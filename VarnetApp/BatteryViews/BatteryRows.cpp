#include "VarnetApp/BatteryViews/BatteryRows.h"

#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/MainViews/RowTile.h"
#include "VarnetCore/Battery/BatteryTracker.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace varnet {

namespace {

constexpr double wornOut = 80; ///< percent of the design capacity below which a battery counts as worn
constexpr std::size_t namedApps = 3;

QString named(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// What is the same about a card whatever it reads. Tones are names of Theme's colours.
struct Card {
    std::string_view key;
    const char* icon;
    const char* tone;
    const char* label;
};

constexpr std::array<Card, 6> cards{{
    {"health", "heart", "good", "Health"},
    {"cycles", "refresh", "info", "Cycles"},
    {"temperature", "thermo", "emberFill", "Temperature"},
    {"capacity", "battery", "good", "Full capacity"},
    {"condition", "check", "good", "Condition"},
    {"adapter", "plug", "text", "Adapter"},
}};

const Card& cardOf(std::string_view key) {
    for (const Card& card : cards)
        if (card.key == key) return card;
    return cards.front();
}

RowKind kindOf(std::string_view id) {
    if (id.starts_with("app:")) return RowKind::application;
    if (id.starts_with("project:")) return RowKind::project;
    return RowKind::process;
}

} // namespace

std::vector<QByteArray> BatteryFigure::roles() {
    return {"key", "icon", "tone", "label", "figure", "about"};
}

QVariant BatteryFigure::value(int role) const {
    const Card& card = cardOf(key);
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return worrying ? "warning" : card.icon;
    case 2:
        return !known ? "muted" : worrying ? "warn" : card.tone;
    case 3:
        return card.label;
    case 4:
        return figure;
    case 5:
        return about;
    default:
        return {};
    }
}

std::vector<BatteryFigure> batteryFigures(const BatteryDashboard* battery, const QLocale& locale) {
    const BatteryReading nothing = BatteryReading::missing(BatteryAvailability::unavailable, {});
    const BatteryReading* const held = BatteryTexts::readingOf(battery);
    const BatteryReading& reading = held ? *held : nothing;
    const QString cycles =
        reading.cycles ? locale.toString(std::max(0, *reading.cycles)) : Figures::unknown();
    const bool worn = reading.health && *reading.health < wornOut;
    return {
        {"health", BatteryDisplay::percent(reading.health, locale),
         worn ? "Well below its capacity when new" : "", reading.health.has_value(), worn},
        {"cycles", cycles, {}, reading.cycles.has_value(), false},
        {"temperature",
         BatteryTexts::temperature(reading.temperature, locale),
         {},
         reading.temperature.has_value(),
         false},
        {"capacity", BatteryTexts::capacity(reading.fullCapacity, locale),
         reading.fullCapacity ? BatteryTexts::designCapacity(reading.designCapacity, locale) : QString(),
         reading.fullCapacity.has_value(), false},
        {"condition", BatteryTexts::condition(reading.condition),
         reading.condition == BatteryCondition::service ? "Its own electronics ask for a service" : "",
         reading.condition != BatteryCondition::unknown, reading.condition == BatteryCondition::service},
        {"adapter",
         BatteryDisplay::watts(reading.adapterWatts, locale),
         {},
         reading.adapterWatts.has_value(),
         false},
    };
}

std::vector<QByteArray> BatteryApp::roles() {
    return {"key", "name", "icon", "letter", "tone", "figure", "fraction", "note", "about"};
}

QVariant BatteryApp::value(int role) const {
    const RowTile tile = tileFor(kindOf(key), named(name));
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return named(name);
    case 2:
        return tile.icon;
    case 3:
        return tile.letter;
    case 4:
        return tile.tone;
    case 5:
        return BatteryDisplay::score(score, locale);
    case 6:
        return fraction;
    case 7:
        return partial ? "partial" : "";
    case 8:
        return partial ? "Part of the session lacks measurements" : "";
    default:
        return {};
    }
}

std::vector<BatteryApp> hungriestApps(const BatterySession& session, std::size_t most,
                                      const QLocale& locale) {
    std::vector<BatteryApp> apps;
    for (const auto& [id, impact] : session.apps) {
        std::optional<double> score = impact.average(session.observedSeconds);
        if (score && !std::isfinite(*score)) score.reset();
        apps.push_back({id, impact.name, score, 0, impact.partial, locale});
    }
    std::ranges::stable_sort(apps, {}, &BatteryApp::name);
    std::ranges::stable_sort(apps, std::ranges::greater{},
                             [](const BatteryApp& app) { return app.score.value_or(-1); });
    if (apps.size() > most) apps.resize(most);
    const double highest = apps.empty() ? 0 : apps.front().score.value_or(0);
    for (BatteryApp& app : apps)
        if (highest > 0) app.fraction = std::clamp(app.score.value_or(0) / highest, 0.0, 1.0);
    return apps;
}

std::vector<QByteArray> BatterySessionRow::roles() {
    return {"key", "when", "measured", "charges", "apps"};
}

QVariant BatterySessionRow::value(int role) const {
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return when;
    case 2:
        return measured;
    case 3:
        return charges;
    case 4:
        return apps;
    default:
        return {};
    }
}

BatterySessionRow sessionRow(const BatterySession& session, Date now, const QLocale& locale) {
    QStringList names;
    for (const BatteryApp& app : hungriestApps(session, namedApps, locale))
        names.append(named(app.name));
    return {session.id.text(), BatteryTexts::when(session, now, locale),
            BatteryTexts::measured(session.observedSeconds), BatteryTexts::charges(session, locale),
            names.isEmpty() ? Figures::unknown() : names.join(", ")};
}

} // namespace varnet
