#pragma once

#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Hall/FlameArchive.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace varnet {

/// The small game of watching: keeps lifetime numbers, days and personal bests, and awards badges for them.
/// A plain value. Every operation returns the ids of the badges that it has just earned, in the order of
/// the catalogue.
class FlameCollection {
public:
    using Earned = std::vector<std::string_view>;

    explicit FlameCollection(FlameArchive archive) : archive_(std::move(archive)) {}

    Earned observe(const MonitorSnapshot& snapshot);
    /// The user looks into a group of this kind.
    Earned inspect(GroupKind kind, Date at);
    /// A stop that the user confirmed. Credits a server once, and only when every target is gone.
    /// @param identity of the server's root
    Earned stoppedService(const ProcessIdentity& identity, std::span<const StopResult> results,
                          bool forgotten, Date at);
    /// Folders that the user reviewed went to the Trash.
    Earned cleaned(std::int64_t folders, std::uint64_t bytes, Date at);

    const FlameArchive& archive() const noexcept { return archive_; }
    const std::optional<Date>& previous() const noexcept { return previous_; }
    double quietSeconds() const noexcept { return quietSeconds_; }
    bool previouslyQuiet() const noexcept { return previouslyQuiet_; }

    /// The place of the date's day among the days; a new one pushes out what has become too old.
    std::size_t dayIndex(Date date);
    Earned award(Date at);

private:
    void observeDay(FlameDay& day, double cpu, double delta);
    void observeQuiet(bool quiet, double delta);
    void observeTools(const MonitorSnapshot& snapshot);
    void observeTopApp(const MonitorSnapshot& snapshot, FlameDay& day);
    void observeFans(const MonitorSnapshot& snapshot);
    void observeFindings(const MonitorSnapshot& snapshot);
    /// Replaces the record of this id when there is none or its value is lower.
    void keepBest(FlameRecord record);

    FlameArchive archive_;
    std::optional<Date> previous_; ///< the last sample accepted
    double quietSeconds_ = 0;      ///< length of the stretch of quiet that lasts now
    bool previouslyQuiet_ = false;
};

} // namespace varnet
