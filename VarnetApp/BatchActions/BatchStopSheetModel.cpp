#include "VarnetApp/BatchActions/BatchStopSheetModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Findings/StopResults.h"

#include <algorithm>

namespace varnet {

namespace {

QString words(const std::string& text) {
    return QString::fromStdString(text);
}

void describeOutcome(SheetRow& row, const StopTarget& target, const std::vector<StopResult>* results) {
    if (!results) return;
    const auto found = std::ranges::find_if(
        *results, [&](const StopResult& result) { return result.target.identity == target.identity; });
    if (found == results->end()) return;
    row.figure.clear();
    row.figure2.clear();
    row.outcome = outcomeText(found->outcome, "Changed · skipped");
    row.tone = outcomeTone(found->outcome);
    row.detail = words(found->detail);
}

} // namespace

void BatchStopSheetModel::begin() {
    connect(&store().stopping(), &StopOperations::batchStopChanged, this, &BatchStopSheetModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &BatchStopSheetModel::refresh);
    refresh();
}

void BatchStopSheetModel::refresh() {
    const StopOperations& stopping = store().stopping();
    const auto& plan = stopping.batchStopPlan();
    // The words of a sheet that closes stay until it has gone.
    Shown shown = shown_;
    shown.open = plan.has_value();
    if (plan) {
        const auto& results = stopping.batchStopResults();
        shown.waiting = stopping.isBatchStopping();
        shown.finished = results.has_value() && !shown.waiting;
        shown.hasSurvivors = results && varnet::hasSurvivors(*results);
        shown.preview = store().isPreview();
        shown.explanation.clear();
        if (shown.waiting) {
            shown.title = "Closing the selected items…";
            shown.introduction = "Apps may ask you to save. Waiting for confirmed exits…";
        } else if (results) {
            shown.title = "Here’s what happened.";
            shown.introduction = shown.hasSurvivors ? "Some items are still running. Check for save dialogs, "
                                                      "or force quit only those remaining."
                                                    : "";
        } else {
            shown.title = "Ready to give your Mac a break?";
            shown.introduction = "Only the items listed below are included. Shared workers appear once.";
            shown.explanation =
                "Quit lets apps ask you to save. Force Quit closes immediately; unsaved work may be lost.";
        }
        rows_.update(rowsOf(*plan));
    }
    if (shown == shown_) return;
    shown_ = std::move(shown);
    emit changed();
}

std::vector<SheetRow> BatchStopSheetModel::rowsOf(const BatchStopPlan& plan) const {
    const auto& results = store().stopping().batchStopResults();
    const std::vector<StopResult>* const known = results ? &*results : nullptr;
    std::vector<SheetRow> rows;
    for (const BatchApplicationStop& stop : plan.applications) {
        SheetRow row;
        row.key = "app:" + stop.target.identity.id();
        row.name = words(stop.target.name);
        row.tile = tileFor(RowKind::application, row.name);
        describeGroup(row, stop.application.bundlePath);
        describeOutcome(row, stop.target, known);
        rows.push_back(std::move(row));
    }
    if (const auto processes = plan.processPlan()) {
        for (const StopTarget& target : processes->targets) {
            SheetRow row;
            row.key = target.identity.id();
            row.name = words(target.name);
            row.note = "Background process";
            row.figure = "PID " + QString::number(target.identity.pid);
            row.tile = tileFor(RowKind::process, row.name);
            describeOutcome(row, target, known);
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

/// What an application uses, as the list shows it.
void BatchStopSheetModel::describeGroup(SheetRow& row, const std::string& bundlePath) const {
    const MonitorSnapshot& snapshot = store().snapshot();
    const auto group = std::ranges::find_if(snapshot.groups, [&](const ApplicationGroup& one) {
        return one.application && one.application->bundlePath == bundlePath;
    });
    if (group == snapshot.groups.end()) return;
    const Figures figures(context().localization.locale());
    row.note = words(group->subtitle);
    row.figure = figures.percent(snapshot.normalized(group->cpu()));
    row.figure2 = figures.memory(group->memory());
}

void BatchStopSheetModel::quitSelected() {
    store().stopping().executeBatchStop(StopForce::polite);
}

void BatchStopSheetModel::forceQuitRemaining() {
    store().stopping().executeBatchStop(StopForce::forced);
}

void BatchStopSheetModel::close() {
    store().stopping().closeBatchStop();
}

} // namespace varnet
