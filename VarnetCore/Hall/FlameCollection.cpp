#include "VarnetCore/Hall/FlameCollection.h"

#include "VarnetCore/Findings/StopResults.h"
#include "VarnetCore/Hall/CappedSum.h"
#include "VarnetCore/Hall/FlameBadge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

namespace varnet {

namespace {

constexpr double longestGap = 15;         ///< seconds; what lies in a longer silence was not watched
constexpr double qualifyingSeconds = 600; ///< of watching, for a day to count
constexpr double quietCPU = 15;           ///< percent of the whole machine, below which it is quiet
constexpr double freshFans = 15;          ///< seconds
constexpr double fastestFan = 20'000;     ///< RPM that are believed
constexpr double ancientAge = 86'400;     ///< seconds
constexpr std::size_t longestLabel = 80;  ///< characters

constexpr std::array<std::string_view, 8> supportedTools{
    "Codex", "Claude Code", "Cursor", "Gemini CLI", "OpenCode", "ChatGPT", "Claude Desktop", "Conductor"};

bool isMeasured(const MonitorSnapshot& snapshot) noexcept {
    const auto& cpu = snapshot.systemCPU;
    return !snapshot.error && cpu && *cpu >= 0 && *cpu <= 100;
}

std::string shortened(const std::string& name) {
    std::size_t characters = 0;
    std::size_t end = 0;
    for (; end < name.size(); ++end) {
        const bool continues = (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U;
        if (!continues && ++characters > longestLabel) break;
    }
    return name.substr(0, end);
}

/// The busiest application that is wholly measured; the first of equals.
const ApplicationGroup* busiestApplication(const MonitorSnapshot& snapshot) {
    const ApplicationGroup* busiest = nullptr;
    double most = 0;
    for (const ApplicationGroup& group : snapshot.groups) {
        if (group.kind != GroupKind::application || group.incomplete()) continue;
        const auto cpu = group.cpu();
        if (!cpu || (busiest && *cpu <= most)) continue;
        busiest = &group;
        most = *cpu;
    }
    return busiest;
}

bool isBetter(const std::optional<FlameRecord>& held, double value) noexcept {
    return !held || value > held->value;
}

} // namespace

std::size_t FlameCollection::dayIndex(Date date) {
    const FlameCalendar calendar = archive_.calendar();
    const Date start = calendar.startOfDay(date);
    auto& days = archive_.days;
    const auto found = std::ranges::find(days, start, &FlameDay::date);
    if (found != days.end()) return static_cast<std::size_t>(found - days.begin());
    const Date oldest = calendar.startOfDay(date, FlameArchive::mostDays - 1);
    std::erase_if(days, [oldest](const FlameDay& day) { return day.date < oldest; });
    days.push_back({.date = start});
    return days.size() - 1;
}

FlameCollection::Earned FlameCollection::award(Date at) {
    Earned earned;
    for (const FlameBadge& badge : FlameBadge::all()) {
        if (archive_.metric(badge.metric) / badge.target < 1 || isEarned(archive_, badge)) continue;
        archive_.unlocked.emplace(badge.id, at);
        earned.push_back(badge.id);
    }
    return earned;
}

void FlameCollection::keepBest(FlameRecord record) {
    const auto [place, isNew] = archive_.records.try_emplace(record.id, record);
    if (!isNew && record.value > place->second.value) place->second = std::move(record);
}

FlameCollection::Earned FlameCollection::observe(const MonitorSnapshot& snapshot) {
    if (previous_ && snapshot.date <= *previous_) return {};
    if (!isMeasured(snapshot)) {
        previous_.reset();
        quietSeconds_ = 0;
        previouslyQuiet_ = false;
        return {};
    }
    const double gap = previous_ ? snapshot.date - *previous_ : 0;
    const double delta = gap > 0 && gap <= longestGap ? gap : 0;
    previous_ = snapshot.date;

    FlameDay& day = archive_.days[dayIndex(snapshot.date)];
    observeDay(day, *snapshot.systemCPU, delta);
    observeQuiet(*snapshot.systemCPU < quietCPU && snapshot.thermal == Thermal::nominal, delta);
    observeTools(snapshot);
    observeTopApp(snapshot, day);
    observeFans(snapshot);
    observeFindings(snapshot);
    return award(snapshot.date);
}

void FlameCollection::observeDay(FlameDay& day, double cpu, double delta) {
    day.seconds += delta;
    day.peakCPU = std::max(day.peakCPU.value_or(0), cpu);
    archive_.metrics["seconds"] += delta;
    if (day.seconds >= qualifyingSeconds) archive_.qualifiedDays.insert(day.date);
    archive_.metrics["days"] = static_cast<double>(archive_.qualifiedDays.size());
}

/// A stretch lasts for as long as samples keep coming.
void FlameCollection::observeQuiet(bool quiet, double delta) {
    quietSeconds_ = quiet && previouslyQuiet_ && delta > 0 ? quietSeconds_ + delta : 0;
    previouslyQuiet_ = quiet;
    double& best = archive_.metrics["quietBest"];
    best = std::max(best, quietSeconds_);
}

void FlameCollection::observeTools(const MonitorSnapshot& snapshot) {
    // Once a tool is known nothing has to be looked up for it any more, which is nearly always.
    std::vector<const Attribution*> news;
    for (const SampleRef& process : snapshot.processes) {
        const Attribution* const attribution = process->attribution.get();
        if (!attribution || attribution->confidence != Confidence::observed) continue;
        const bool supported = std::ranges::find(supportedTools, attribution->agent) != supportedTools.end();
        if (supported && !archive_.tools.contains(attribution->agent)) news.push_back(attribution);
    }
    if (!news.empty()) {
        std::ranges::sort(news, {}, &Attribution::origin);
        for (const SampleRef& process : snapshot.processes) {
            const auto lives = std::ranges::equal_range(news, process->id, {}, &Attribution::origin);
            for (const Attribution* const attribution : lives)
                archive_.tools.insert(attribution->agent);
        }
    }
    archive_.metrics["tools"] = static_cast<double>(archive_.tools.size());
}

void FlameCollection::observeTopApp(const MonitorSnapshot& snapshot, FlameDay& day) {
    const ApplicationGroup* const group = busiestApplication(snapshot);
    if (!group) return;
    const double share =
        std::clamp(group->cpu().value_or(0) / std::max(snapshot.logicalCores, 1), 0.0, 100.0);
    const auto held = archive_.records.find("app");
    const bool isRecord = held == archive_.records.end() || share > held->second.value;
    if (!isRecord && !isBetter(day.topApp, share)) return;
    FlameRecord record{"app", shortened(group->name), share, snapshot.date};
    if (isBetter(day.topApp, share)) day.topApp = record;
    if (isRecord) keepBest(std::move(record));
}

void FlameCollection::observeFans(const MonitorSnapshot& snapshot) {
    const FanSnapshot& fans = snapshot.fans;
    if (fans.availability != FanAvailability::available || !fans.measuredAt) return;
    const double age = snapshot.date - *fans.measuredAt;
    if (!(age >= 0 && age <= freshFans)) return;
    const auto fastest = fans.fastest();
    if (fastest && *fastest >= 0 && *fastest <= fastestFan)
        keepBest({"fan", "Fastest measured fan", *fastest, snapshot.date});
    const bool known = std::ranges::any_of(fans.fans, [](const Fan& fan) { return fan.ratio().has_value(); });
    if (fans.level == FanLevel::takeoff && known) archive_.metrics["takeoff"] = 1;
}

void FlameCollection::observeFindings(const MonitorSnapshot& snapshot) {
    for (const Finding& finding : snapshot.findings) {
        if (finding.kind == FindingKind::duplicate) archive_.metrics["duplicate"] = 1;
        if (finding.kind != FindingKind::forgotten) continue;
        const auto service = std::ranges::find_if(snapshot.services, [&](const Service& one) {
            return std::ranges::find(finding.targets, one.root->id) != finding.targets.end();
        });
        if (service == snapshot.services.end()) continue;
        const double age = snapshot.date - service->root->id.startedAt();
        if (std::isfinite(age) && age >= 0)
            keepBest({"leftover", "A possibly forgotten server", age, snapshot.date});
    }
}

FlameCollection::Earned FlameCollection::inspect(GroupKind kind, Date at) {
    if (kind == GroupKind::unassigned) return {};
    archive_.inspectedKinds.emplace(rawValue(kind));
    archive_.metrics["inspections"] = static_cast<double>(archive_.inspectedKinds.size());
    return award(at);
}

FlameCollection::Earned FlameCollection::stoppedService(const ProcessIdentity& identity,
                                                        std::span<const StopResult> results, bool forgotten,
                                                        Date at) {
    const std::string id = identity.id();
    auto& credited = archive_.creditedStops;
    if (std::ranges::find(credited, id) != credited.end()) return {};
    const bool stopped = std::ranges::any_of(results, [&](const StopResult& result) {
        return result.target.identity == identity && result.outcome == StopOutcome::stopped;
    });
    if (!stopped || !allExited(results)) return {};

    credited.push_back(id);
    if (credited.size() > FlameArchive::mostCreditedStops) {
        const auto surplus = credited.size() - FlameArchive::mostCreditedStops;
        credited.erase(credited.begin(), credited.begin() + static_cast<std::ptrdiff_t>(surplus));
    }
    FlameDay& day = archive_.days[dayIndex(at)];
    day.stops = cappedSum<std::int64_t>(day.stops, 1);
    if (forgotten) {
        day.ghosts = cappedSum<std::int64_t>(day.ghosts, 1);
        archive_.metrics["ghosts"] += 1;
        if (at - identity.startedAt() >= ancientAge) archive_.metrics["ancient"] = 1;
    }
    return award(at);
}

FlameCollection::Earned FlameCollection::cleaned(std::int64_t folders, std::uint64_t bytes, Date at) {
    if (folders < 1) return {};
    FlameDay& day = archive_.days[dayIndex(at)];
    day.folders = cappedSum(day.folders, folders);
    day.trashBytes = cappedSum(day.trashBytes, bytes);
    archive_.cleanupDays.insert(day.date);
    archive_.metrics["cleanupDays"] = static_cast<double>(archive_.cleanupDays.size());
    archive_.metrics["cleanups"] += 1;
    archive_.metrics["trashBytes"] += static_cast<double>(bytes);
    keepBest({"cleanup", "Largest reviewed cleanup", static_cast<double>(bytes), at});
    return award(at);
}

} // namespace varnet
