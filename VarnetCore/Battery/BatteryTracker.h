#pragma once

#include "VarnetCore/Battery/BatteryArchive.h"
#include "VarnetCore/Battery/BatteryHistory.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/CPUWindow.h"

#include <optional>
#include <set>
#include <span>
#include <string>

namespace varnet {

/// What the battery page draws.
struct BatteryDashboard {
    BatteryReading reading;
    BatteryHistory archive;
    std::optional<Uuid> currentSessionID;
    std::optional<double> dischargeWatts; ///< averaged over 30 seconds, positive
    std::optional<std::string> warning;   ///< trouble with the history's file; empty: none
};

/// Keeps the battery's memory: the week's charge curve, a capacity estimate a day, and the sessions on
/// battery with the groups that used energy in each. A plain value for one thread.
class BatteryTracker {
public:
    /// Seconds: samples further apart are not joined, and a reading this far from its sample is not believed.
    static constexpr double maximumGap = 15;
    /// Least seconds between two points of one segment.
    static constexpr double pointInterval = 60;

    explicit BatteryTracker(BatteryArchive archive = {});

    /// Takes a reading with the groups of the same pass.
    BatteryDashboard observe(const BatteryReading& reading, std::span<const ApplicationGroup> groups,
                             Date at);
    /// Forgets the running state, as sleep does; the archive stays.
    void interrupt();

    const BatteryArchive& archive() const noexcept { return archive_; }
    const std::optional<Uuid>& currentSessionID() const noexcept { return currentSessionID_; }
    const std::optional<Date>& previousDate() const noexcept { return previousDate_; }
    const std::optional<BatteryReading>& previousReading() const noexcept { return previousReading_; }
    const std::set<std::string>& previousGroupIDs() const noexcept { return previousGroupIDs_; }
    const Uuid& segment() const noexcept { return segment_; }

private:
    std::optional<double> trackSession(const BatteryReading& reading,
                                       std::span<const ApplicationGroup> groups,
                                       const std::set<std::string>& measured, Date at,
                                       std::optional<double> delta);
    void apportion(BatterySession& session, std::span<const ApplicationGroup> groups,
                   const std::set<std::string>& measured, double delta) const;
    void addPoint(const BatteryReading& reading, Date at);
    void addHealth(const BatteryReading& reading, Date at);
    void prune(Date at);
    const BatteryHistory& publish();

    BatteryArchive archive_;
    BatteryHistory published_;  ///< the archive as the dashboard before had it
    bool pointsChanged_ = true; ///< since then
    bool healthChanged_ = true;
    std::optional<Uuid> touchedSession_; ///< the one session that may differ from the published
    std::optional<Uuid> currentSessionID_;
    std::optional<Date> previousDate_;
    std::optional<BatteryReading> previousReading_;
    std::set<std::string> previousGroupIDs_; ///< groups with energy scores at the last sample
    Uuid segment_ = Uuid::random();
    CPUWindow dischargeWindow_;
};

} // namespace varnet
