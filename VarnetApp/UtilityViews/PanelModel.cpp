#include "VarnetApp/UtilityViews/PanelModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/Updates/AppUpdater.h"
#include "VarnetApp/UtilityViews/PanelOrder.h"
#include "VarnetApp/UtilityViews/UpdateTexts.h"

#include <algorithm>

namespace varnet {

namespace {

double shareOf(std::optional<double> part, double whole) {
    return part && whole > 0 ? std::clamp(*part / whole, 0.0, 1.0) : 0.0;
}

void call(const std::function<void()>& action) {
    if (action) action();
}

} // namespace

void PanelModel::begin() {
    store().publishLatest();
    pinnedOrder_ = PanelOrder::pinned(store().snapshot().groups);
    connect(&store(), &VarnetStore::snapshotChanged, this, &PanelModel::refresh);
    connect(&store(), &VarnetStore::roastChanged, this, &PanelModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &PanelModel::refresh);
    if (context().updater) connect(context().updater, &AppUpdater::changed, this, &PanelModel::refresh);
    refresh();
}

PanelModel::Shown PanelModel::read() const {
    const MonitorSnapshot& snapshot = store().snapshot();
    const Roast& roast = store().roast();
    const Figures figures(context().localization.locale());
    Shown shown;
    if (const AppUpdater* const updater = context().updater) {
        shown.update = UpdateTexts::available(updater->availableVersion());
        shown.canCheckForUpdates = updater->canCheckForUpdates();
    }
    shown.headline = QString::fromStdString(roast.headline);
    const auto face = rawValue(FlameFace::state(roast.mood, roast.characterTopic));
    shown.expression = QString::fromUtf8(face.data(), static_cast<qsizetype>(face.size()));
    // After a failed pass the old figure would pass for a current one.
    const std::optional<double> cpu = snapshot.error ? std::nullopt : snapshot.systemCPU;
    const std::optional<std::uint64_t> memory = snapshot.processMemory();
    shown.cpu = figures.wholePercent(cpu);
    shown.memory = figures.memory(memory);
    shown.cpuShare = shareOf(cpu, 100);
    shown.memoryShare = shareOf(memory, static_cast<double>(snapshot.physicalMemory));
    shown.failed = snapshot.error.has_value();
    if (snapshot.error) {
        shown.notice = QString::fromStdString(*snapshot.error);
    } else if (snapshot.processes.empty()) {
        shown.notice = "Finding your apps and processes…";
    }
    shown.findingCount = figures.count(snapshot.findings.size());
    return shown;
}

void PanelModel::refresh() {
    const MonitorSnapshot& snapshot = store().snapshot();
    std::vector<PanelFinding> findings;
    findings.reserve(snapshot.findings.size());
    for (const Finding& finding : snapshot.findings)
        findings.push_back({finding.id, finding.kind, finding.title});
    findings_.update(std::move(findings));

    std::vector<PanelGroup> groups;
    for (const ApplicationGroup* group : PanelOrder::top(snapshot.groups, pinnedOrder_)) {
        groups.push_back({group->id, group->name, group->kind, snapshot.normalized(group->cpu()),
                          group->memory(), context().localization.locale()});
    }
    groups_.update(std::move(groups));

    Shown next = read();
    if (next == shown_) return;
    shown_ = std::move(next);
    emit changed();
}

void PanelModel::inspectFinding(const QString& key) {
    // Held: looking into something may publish anew.
    const auto snapshot = store().sharedSnapshot();
    const auto found = std::ranges::find(snapshot->findings, key.toStdString(), &Finding::id);
    if (found != snapshot->findings.end()) store().inspect(*found);
}

void PanelModel::inspectGroup(const QString& key) {
    const auto snapshot = store().sharedSnapshot();
    const auto found = std::ranges::find(snapshot->groups, key.toStdString(), &ApplicationGroup::id);
    if (found != snapshot->groups.end()) store().inspect(*found);
}

void PanelModel::shareReport() {
    store().presentRoast();
    call(store().openMain);
}

void PanelModel::openOverview() {
    store().navigate("overview");
}

void PanelModel::openSettings() {
    call(store().openSettings);
}

void PanelModel::ask(void (AppUpdater::*what)()) {
    AppUpdater* const updater = context().updater;
    if (!updater) return;
    // Where the answer is seen. The panel may be on its way out then.
    call(store().openSettings);
    (updater->*what)();
}

void PanelModel::openUpdate() {
    ask(&AppUpdater::openUpdate);
}

void PanelModel::checkForUpdates() {
    ask(&AppUpdater::checkForUpdates);
}

void PanelModel::sendFeedback() {
    call(context().actions.openFeedback);
}

void PanelModel::quit() {
    call(context().actions.quit);
}

void PanelModel::close() {
    call(context().actions.closePanel);
}

} // namespace varnet
