#include "VarnetApp/HallOfFlame/HallRows.h"

#include "VarnetApp/HallOfFlame/BadgeLook.h"
#include "VarnetCore/Base/Display.h"
#include "VarnetCore/Hall/FlameBadge.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varnet {

namespace {

std::uint64_t shownCount(std::int64_t count) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(count, 0));
}

/// A record of any age and size, from a file that may hold anything.
std::uint64_t shownBytes(double bytes) {
    constexpr double beyond = 18446744073709551616.0;
    if (!(bytes > 0)) return 0;
    return bytes < beyond ? static_cast<std::uint64_t>(bytes) : ~std::uint64_t{0};
}

/// What is told about each kind of record.
struct BestKind {
    const char* id;
    const char* title;
    const char* icon;
    const char* tone;
    const char* empty;
    const char* detail;
};

constexpr std::array<BestKind, 4> bestKinds{{
    {"app", "Biggest app appetite", "flame", "accent", "No app readings yet",
     "30-second CPU average · whole Mac"},
    {"leftover", "Longest overtime", "hourglass", "warn", "No forgotten server observed",
     "Age when a Possibly forgotten server was observed"},
    {"fan", "Flight recorder", "fan", "info", "No supported fan readings yet",
     "Measured RPM · not a sound level"},
    {"cleanup", "Biggest spring clean", "broom", "good", "No reviewed cleanup yet",
     "Measured folder size moved to Trash · not freed space"},
}};

QString bestFigure(const FlameRecord& record, const Figures& figures) {
    if (record.id == "app") return figures.share(record.value);
    if (record.id == "fan") return figures.speed(record.value);
    if (record.id == "cleanup") return figures.fileSize(shownBytes(record.value));
    return QString::fromStdString(Display::duration({0}, {record.value}));
}

} // namespace

QString shownText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::vector<QByteArray> BadgeRow::roles() {
    return {"badge", "title", "iconName", "tier", "tone", "ink", "earned", "progress", "words", "finePrint"};
}

QVariant BadgeRow::value(int role) const {
    const FlameBadge* const badge = FlameBadge::named(key);
    if (!badge) return {};
    switch (role) {
    case 0:
        return shownText(badge->id);
    case 1:
        return shownText(badge->title);
    case 2:
        return BadgeLook::icon(*badge);
    case 3:
        return shownText(badge->tier);
    case 4:
        return BadgeLook::tone(*badge);
    case 5:
        return BadgeLook::ink(*badge);
    case 6:
        return earned;
    case 7:
        return progress;
    case 8: // what its bubble says first
        return shownText(earned ? badge->quip : badge->rule);
    case 9: // and what below it
        return earned ? shownText(badge->rule) : QString();
    default:
        return {};
    }
}

std::vector<QByteArray> WeekRow::roles() {
    return {"name", "label", "icon", "tone", "figure", "note"};
}

QVariant WeekRow::value(int role) const {
    const std::array<QString, 6> values{QString::fromStdString(key), label, icon, tone, figure, note};
    return role >= 0 && role < 6 ? values[static_cast<std::size_t>(role)] : QVariant();
}

std::vector<QByteArray> BestRow::roles() {
    return {"name", "title", "icon", "tone", "figure", "line", "detail"};
}

QVariant BestRow::value(int role) const {
    const std::array<QString, 7> values{QString::fromStdString(key), title, icon, tone, figure, line, detail};
    return role >= 0 && role < 7 ? values[static_cast<std::size_t>(role)] : QVariant();
}

std::vector<BadgeRow> HallRows::badges(const FlameArchive& archive, Shown shown) {
    std::vector<BadgeRow> rows;
    for (const FlameBadge& badge : FlameBadge::all()) {
        const bool earned = isEarned(archive, badge);
        if (earned || shown == Shown::all)
            rows.push_back({std::string(badge.id), earned, progress(archive, badge)});
    }
    return rows;
}

std::vector<WeekRow> HallRows::week(const FlameWeek& week, const Figures& figures) {
    const auto folders = shownCount(week.folders());
    return {
        {"stops", "Servers stopped", "stop", "ember", figures.count(shownCount(week.stops())),
         figures.count(shownCount(week.ghosts())) + " possibly forgotten"},
        {"trash", "Moved to Trash", "trash", "ember", figures.fileSize(week.trashBytes()),
         figures.count(folders) + (folders == 1 ? " reviewed folder" : " reviewed folders")},
        {"badges", "Badges earned", "hall", "link", figures.count(shownCount(week.badges)),
         "A little proof. A lot of pride."},
        {"peak", "Peak whole Mac CPU", "cpu", "bad", figures.share(week.peakCPU()), ""},
    };
}

std::vector<BestRow> HallRows::bests(const FlameArchive& archive, const Figures& figures) {
    std::vector<BestRow> rows;
    for (const BestKind& kind : bestKinds) {
        BestRow row{kind.id, kind.title, kind.icon, kind.tone, {}, kind.empty, kind.detail};
        const auto record = archive.records.find(kind.id);
        if (record != archive.records.end()) {
            row.figure = bestFigure(record->second, figures);
            // Only an application has a name of its own.
            row.line = row.key == "app" ? QString::fromStdString(record->second.label) : QString();
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace varnet
