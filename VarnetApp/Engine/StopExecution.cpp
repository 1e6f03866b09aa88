#include "VarnetApp/Engine/StopExecution.h"

#include <fmt/format.h>

#include <signal.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace varnet {

namespace {

constexpr std::int32_t identityChanged = 70; // what the checked signal answers for a reused pid

} // namespace

StopExecution::StopExecution(StopPlan plan, StopForce force, std::uint64_t boot) noexcept
    : plan_(std::move(plan)), force_(force), boot_(boot) {}

void StopExecution::close(const StopTarget& target, StopOutcome outcome, std::string detail) {
    closed_.insert_or_assign(target.identity, StopResult{target, outcome, std::move(detail)});
}

void StopExecution::signal(Probes& probes) {
    std::vector<StopTarget> newestFirst = plan_.targets;
    std::ranges::stable_sort(newestFirst, std::greater{},
                             [](const StopTarget& target) { return target.identity.start; });
    const std::int32_t signal = force_ == StopForce::forced ? SIGKILL : SIGTERM;
    for (const StopTarget& target : newestFirst) {
        const ProcessIdentity& identity = target.identity;
        if (identity.boot != boot_) {
            close(target, StopOutcome::identityChanged);
            continue;
        }
        switch (const std::int32_t answer =
                    probes.signalChecked(identity.pid, identity.start, target.uid, signal)) {
        case 0:
            break;
        case ESRCH:
            close(target, StopOutcome::alreadyStopped);
            break;
        case identityChanged:
            close(target, StopOutcome::identityChanged);
            break;
        default:
            close(target, StopOutcome::denied, std::generic_category().message(answer));
        }
    }
}

void StopExecution::startWaiting(Date now) noexcept {
    deadline_ = now + (force_ == StopForce::forced ? forcedPatience : politePatience);
}

bool StopExecution::look(Probes& probes, Date now) {
    if (now >= deadline_) return true;
    for (const StopTarget& target : plan_.targets) {
        if (!isOpen(target)) continue;
        const auto identity = probes.identity(target.identity.pid);
        // Another start means that the pid was given away, which it can only be once its process has gone.
        const bool gone =
            identity ? identity->start != target.identity.start : probes.exists(target.identity.pid) == ESRCH;
        if (gone) close(target, StopOutcome::stopped);
    }
    return std::ranges::none_of(plan_.targets, [this](const StopTarget& target) { return isOpen(target); });
}

std::vector<StopResult> StopExecution::results() const {
    std::vector<StopResult> results;
    results.reserve(plan_.targets.size());
    for (const StopTarget& target : plan_.targets) {
        const auto closed = closed_.find(target.identity);
        results.push_back(closed != closed_.end() ? closed->second
                                                  : StopResult{target, StopOutcome::stillRunning, {}});
    }
    return results;
}

HistoryRecord StopExecution::record(Date now) const {
    const auto results = this->results();
    const auto exited =
        std::ranges::count_if(results, [](const StopResult& result) { return isExited(result.outcome); });
    const auto total = std::ssize(results);
    return {Uuid::random(), now, plan_.name + (exited == total ? " stopped" : ": partial result"),
            fmt::format("{} of {} reviewed processes exited.", exited, total)};
}

} // namespace varnet
