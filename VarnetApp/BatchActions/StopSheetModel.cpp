#include "VarnetApp/BatchActions/StopSheetModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetCore/Findings/StopResults.h"

#include <algorithm>

namespace varnet {

namespace {

QString words(const std::string& text) {
    return QString::fromStdString(text);
}

SheetRow rowFor(const StopTarget& target, const std::vector<StopResult>* results) {
    SheetRow row;
    row.key = target.identity.id();
    row.name = words(target.name);
    row.figure = "PID " + QString::number(target.identity.pid);
    row.note = "Background process";
    row.tile = tileFor(RowKind::process, row.name);
    if (!results) return row;
    const auto found = std::ranges::find_if(
        *results, [&](const StopResult& result) { return result.target.identity == target.identity; });
    if (found == results->end()) return row;
    row.note = row.figure;
    row.figure.clear();
    row.outcome = outcomeText(found->outcome, "Identity changed · skipped");
    row.tone = outcomeTone(found->outcome);
    row.detail = words(found->detail);
    return row;
}

} // namespace

void StopSheetModel::begin() {
    connect(&store().stopping(), &StopOperations::stopChanged, this, &StopSheetModel::refresh);
    refresh();
}

void StopSheetModel::refresh() {
    const StopOperations& stopping = store().stopping();
    const auto& plan = stopping.stopPlan();
    // The words of a sheet that closes stay until it has gone.
    Shown shown = shown_;
    shown.open = plan.has_value();
    if (!plan) forcing_ = false;
    if (plan) {
        const auto& results = stopping.stopResults();
        shown.title = "Stop " + words(plan->name);
        shown.project = plan->project ? words(*plan->project) : QString("No project identified");
        shown.agent = plan->origin ? words(plan->origin->agent) : QString();
        shown.ports.clear();
        for (const int port : plan->ports)
            shown.ports.append(":" + QString::number(port));
        // The place is remembered: the service leaves the picture while the sheet is open.
        if (const Service* const service = stopping.publishedService(plan->serviceID);
            service && service->project()) {
            shown.worktree = words(service->project()->worktree);
        } else if (!shown_.open) {
            shown.worktree.clear();
        }
        shown.waiting = stopping.isStopping();
        shown.finished = results.has_value() && !shown.waiting;
        shown.hasSurvivors = results && varnet::hasSurvivors(*results);
        if (shown.waiting) {
            shown.introduction = forcing_ ? "Force quit sent. Confirming exits…"
                                          : "Waiting for confirmed exits (up to 10 seconds)…";
        } else if (results) {
            shown.introduction = "Here’s what happened.";
        } else {
            shown.introduction = "Stops only the processes below. Related work may be interrupted. Your "
                                 "IDE, terminal and other projects stay open.";
        }
        std::vector<SheetRow> rows;
        for (const StopTarget& target : plan->targets)
            rows.push_back(rowFor(target, results ? &*results : nullptr));
        rows_.update(std::move(rows));
    }
    if (shown == shown_) return;
    shown_ = std::move(shown);
    emit changed();
}

void StopSheetModel::quit() {
    store().stopping().executeStop(StopForce::polite);
}

void StopSheetModel::forceQuit() {
    forcing_ = true;
    store().stopping().executeStop(StopForce::forced);
    refresh();
}

void StopSheetModel::close() {
    store().stopping().closeStop();
}

} // namespace varnet
