#include "VarnetApp/MainViews/OverviewModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetApp/Localization/FanReading.h"
#include "VarnetApp/MainViews/CPUShares.h"
#include "VarnetApp/MainViews/OverviewTexts.h"
#include "VarnetCore/Base/Clock.h"

#include <algorithm>
#include <utility>

namespace varnet {

namespace {

QString named(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toneOf(Thermal thermal) {
    switch (thermal) {
    case Thermal::nominal:
        return "good";
    case Thermal::fair:
        return "warn";
    case Thermal::serious:
    case Thermal::critical:
        break;
    }
    return "bad";
}

/// Empty when there are contributors to show.
BlockNotice contributorsNotice(const MonitorSnapshot& snapshot) {
    if (snapshot.error) {
        return {"warning", "bad", "Measurements unavailable",
                "We’ll retry automatically. No readings are being assumed."};
    }
    if (!measurementsReady(snapshot))
        return {"hourglass", "muted", "Taking attendance", "Your running apps will appear here."};
    return {};
}

/// Empty when there are findings to show.
BlockNotice attentionNotice(const MonitorSnapshot& snapshot) {
    if (!snapshot.findings.empty()) return {};
    if (measurementsReady(snapshot))
        return {"check", "good", "Nothing needs your attention.", "Your Mac gets a pass. For now."};
    return {"hourglass", "muted", "Still gathering evidence.", "Waiting for enough data to check."};
}

} // namespace

void OverviewModel::begin() {
    connect(&store(), &VarnetStore::snapshotChanged, this, &OverviewModel::refresh);
    connect(&store(), &VarnetStore::roastChanged, this, &OverviewModel::refreshRoast);
    connect(&context().localization, &AppLocalization::languageChanged, this, &OverviewModel::refresh);
    refresh();
    refreshRoast();
}

void OverviewModel::refreshRoast() {
    const Roast& roast = store().roast();
    headline_ = QString::fromStdString(roast.headline);
    explanation_ = QString::fromStdString(roast.explanation);
    observations_.clear();
    for (const std::string& line : roast.observations)
        observations_.append(QString::fromStdString(line));
    expression_ = named(rawValue(FlameFace::state(roast.mood, roast.characterTopic)));
    emit roastChanged();
}

void OverviewModel::refresh() {
    const MonitorSnapshot& snapshot = store().snapshot();
    const Figures figures(context().localization.locale());
    const std::optional<double> cpu = snapshot.error ? std::nullopt : snapshot.systemCPU;
    cpu_ = figures.wholePercent(cpu);
    cpuFraction_ = std::clamp(cpu.value_or(0) / 100, 0.0, 1.0);
    thermal_ = OverviewTexts::thermal(snapshot.thermal);
    thermalTone_ = toneOf(snapshot.thermal);
    refreshMetrics(snapshot, figures);
    refreshContributors(snapshot);
    emit readingsChanged();
    refreshAttention(snapshot);
    tick();
}

void OverviewModel::refreshMetrics(const MonitorSnapshot& snapshot, const Figures& figures) {
    const std::optional<std::uint64_t> bytes = snapshot.error ? std::nullopt : snapshot.processMemory();
    const std::optional<std::uint64_t> used = snapshot.systemMemory.usedRAM;
    MetricEntry memory{"memory", figures.memory(bytes), {}, {}, bytes.has_value()};
    if (bytes) {
        memory.note = OverviewTexts::memory(used, snapshot.physicalMemory, figures);
        if (used && snapshot.physicalMemory > 0)
            memory.share = static_cast<double>(*used) / static_cast<double>(snapshot.physicalMemory);
    }

    const FanReading fans = fanReading(snapshot.fans, figures);
    const bool fansKnown = snapshot.fans.availability == FanAvailability::available ||
                           snapshot.fans.availability == FanAvailability::fanless;

    const QLocale& locale = context().localization.locale();
    const BatteryReading* const reading = BatteryTexts::readingOf(snapshot.battery.get());
    const std::optional<double> charge = reading ? reading->charge : std::nullopt;
    MetricEntry battery{"battery",
                        BatteryDisplay::percent(charge, locale),
                        BatteryTexts::summary(snapshot.battery.get(), locale),
                        {},
                        charge.has_value()};
    if (charge) battery.share = *charge / 100;

    const std::optional<std::size_t> count = store().itemCount(Page::servers);
    MetricEntry servers{
        "servers", count ? figures.count(*count) : Figures::unknown(), {}, {}, count.has_value()};
    if (count) servers.note = OverviewTexts::tools(snapshot.agentCount());

    metrics_.update({std::move(memory),
                     {"fans", fans.figure, fans.detail, fans.share, fansKnown},
                     std::move(battery),
                     std::move(servers)});
}

void OverviewModel::refreshContributors(const MonitorSnapshot& snapshot) {
    contributorsNotice_ = contributorsNotice(snapshot);
    if (!contributorsNotice_.title.isEmpty()) {
        categories_.update({});
        contributors_.update({});
        shares_.clear();
        return;
    }
    const QLocale& locale = context().localization.locale();
    const CPUShares shares = cpuShares(snapshot);
    categories_.update(
        {{"Apps", shares.apps, locale}, {"Dev", shares.dev, locale}, {"Other", shares.other, locale}});
    shares_ = {shares.apps.value_or(0) / 100, shares.dev.value_or(0) / 100, shares.other.value_or(0) / 100};

    std::vector<ContributorEntry> rows;
    double busiest = 0;
    for (const ApplicationGroup& group : snapshot.groups) {
        if (rows.size() == busiestGroups) break;
        const std::optional<double> percent = snapshot.normalized(group.cpu());
        busiest = std::max(busiest, percent.value_or(0));
        rows.push_back({group.id, group.name, group.subtitle, group.kind, percent, 0, locale});
    }
    for (ContributorEntry& row : rows)
        if (busiest > 0) row.fraction = row.percent.value_or(0) / busiest;
    contributors_.update(std::move(rows));
}

void OverviewModel::refreshAttention(const MonitorSnapshot& snapshot) {
    const std::vector<Finding>& all = snapshot.findings;
    const bool foldable = all.size() > firstFindings;
    const std::size_t shown = foldable && !showAllFindings_ ? firstFindings : all.size();
    std::vector<AttentionEntry> rows;
    for (const Finding& finding : std::span(all).first(shown))
        rows.push_back({finding.id, finding.kind, finding.title, finding.explanation});
    findings_.update(std::move(rows));

    const QString toggle = !foldable          ? QString()
                           : showAllFindings_ ? QString("Show fewer")
                                              : QString("View all %1").arg(all.size());
    const BlockNotice notice = attentionNotice(snapshot);
    if (toggle == toggle_ && notice == attentionNotice_) return;
    toggle_ = toggle;
    attentionNotice_ = notice;
    emit attentionChanged();
}

void OverviewModel::setShowAllFindings(bool shown) {
    if (shown == showAllFindings_) return;
    showAllFindings_ = shown;
    refreshAttention(store().snapshot());
    emit attentionChanged();
}

void OverviewModel::tick() {
    const QString updated =
        OverviewTexts::updated(OverviewTexts::measuredAt(store().snapshot()), context().clock.now());
    if (updated == updated_) return;
    updated_ = updated;
    emit updatedChanged();
}

void OverviewModel::openMetric(const QString& name) {
    if (name == "memory") {
        store().setSortName("memory");
        openSources();
    } else if (name == "battery" || name == "servers") {
        store().navigate(name);
    }
}

void OverviewModel::openSources() {
    store().navigate("sources");
}

void OverviewModel::inspectGroup(const QString& key) {
    const std::vector<ApplicationGroup>& groups = store().snapshot().groups;
    const auto found = std::ranges::find(groups, key.toStdString(), &ApplicationGroup::id);
    if (found != groups.end()) store().inspect(*found);
}

const Finding* OverviewModel::findingOf(const QString& key) const {
    const std::vector<Finding>& all = store().snapshot().findings;
    const auto found = std::ranges::find(all, key.toStdString(), &Finding::id);
    return found == all.end() ? nullptr : &*found;
}

void OverviewModel::inspectFinding(const QString& key) {
    if (const Finding* const finding = findingOf(key)) store().inspect(*finding);
}

void OverviewModel::ignoreFinding(const QString& key) {
    // A copy: ignoring replaces the snapshot that holds it.
    if (const Finding* const finding = findingOf(key)) store().ignore(Finding(*finding));
}

} // namespace varnet
