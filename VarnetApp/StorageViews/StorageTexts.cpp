#include "VarnetApp/StorageViews/StorageTexts.h"

#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/StorageMap/DiskNames.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace varnet {

namespace {

constexpr const char* partialMeasurement = "Partial measurement";
constexpr const char* manager = "Conductor";
constexpr std::array<std::string_view, 4> agents{manager, "Codex", "Cursor", "Claude Code"};

/// Nothing was seen of it yet.
bool isUnseen(const StorageProject& project) noexcept {
    return !project.measured && project.bytes() == 0;
}

} // namespace

bool StorageTexts::isPartial(const StorageProject& project, bool scanning) noexcept {
    return project.partial && (project.measured || !scanning);
}

bool StorageTexts::isPartial(const StorageFamily& family, bool scanning) noexcept {
    return std::ranges::any_of(family.members,
                               [&](const StorageProject& each) { return isPartial(each, scanning); });
}

QString StorageTexts::title(const StorageProject& project) {
    return shownName(project.branch.empty() ? project.name : project.branch);
}

QString StorageTexts::subtitle(const StorageProject& project, bool scanning) {
    if (isPartial(project, scanning)) return partialMeasurement;
    return shownName(project.measured || !scanning ? project.source : project.gitSummary);
}

QString StorageTexts::subtitle(const StorageFamily& family, bool scanning) {
    const std::size_t worktrees = family.worktreeCount();
    const QString sources = shownName(family.sources());
    if (worktrees == 0 && family.members.size() == 1) return subtitle(family.members.front(), scanning);
    if (worktrees == 0) return sources;
    const QString number = QString::number(worktrees) + (worktrees == 1 ? " worktree" : " worktrees");
    return number + " · " + sources;
}

QString StorageTexts::size(std::uint64_t bytes, const QLocale& locale) {
    return Figures(locale).diskSize(bytes);
}

QString StorageTexts::size(const StorageProject& project, const QLocale& locale) {
    return isUnseen(project) ? Figures::unknown() : size(project.bytes(), locale);
}

QString StorageTexts::size(const StorageFamily& family, const QLocale& locale) {
    return std::ranges::all_of(family.members, isUnseen) ? Figures::unknown() : size(family.bytes(), locale);
}

QString StorageTexts::toReview(std::uint64_t bytes, const QLocale& locale) {
    return bytes == 0 ? QString() : size(bytes, locale) + " to review";
}

QString StorageTexts::day(std::optional<Date> date, const QLocale& locale) {
    const double seconds = date ? date->sinceUnixEpoch() : NAN;
    if (!std::isfinite(seconds) || std::abs(seconds) > 1e11) return Figures::unknown();
    return locale.toString(QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(seconds))),
                           "d MMM yyyy");
}

QString StorageTexts::note(StorageBucket bucket) {
    return bucket == StorageBucket::dependencies ? "Reinstall before running this project again"
                                                 : "Rebuilt when the project runs";
}

bool StorageTexts::isManaged(const StorageProject& project) noexcept {
    return project.container.has_value() || project.source == manager;
}

bool StorageTexts::isOfAgent(const StorageProject& project) noexcept {
    return std::ranges::find(agents, project.source) != agents.end();
}

} // namespace varnet
