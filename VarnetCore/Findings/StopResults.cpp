#include "VarnetCore/Findings/StopResults.h"

#include <algorithm>
#include <unordered_map>

namespace varnet {
namespace {

bool survived(const StopResult& result) noexcept {
    return result.outcome == StopOutcome::stillRunning;
}

} // namespace

std::vector<StopResult> merged(std::span<const StopResult> previous, std::span<const StopResult> later,
                               std::span<const StopTarget> targets) {
    std::unordered_map<ProcessIdentity, const StopResult*> known;
    for (const std::span<const StopResult> results : {previous, later}) {
        for (const StopResult& result : results)
            known.insert_or_assign(result.target.identity, &result);
    }
    std::vector<StopResult> results;
    results.reserve(targets.size());
    for (const StopTarget& target : targets) {
        const auto found = known.find(target.identity);
        if (found != known.end()) results.push_back(*found->second);
    }
    return results;
}

std::vector<StopTarget> survivors(std::span<const StopTarget> targets, std::span<const StopResult> results) {
    std::vector<StopTarget> left;
    for (const StopTarget& target : targets) {
        const bool isLeft = std::ranges::any_of(results, [&](const StopResult& result) {
            return survived(result) && result.target.identity == target.identity;
        });
        if (isLeft) left.push_back(target);
    }
    return left;
}

bool hasSurvivors(std::span<const StopResult> results) noexcept {
    return std::ranges::any_of(results, survived);
}

bool allExited(std::span<const StopResult> results) noexcept {
    return std::ranges::all_of(results, [](const StopResult& result) { return isExited(result.outcome); });
}

} // namespace varnet
