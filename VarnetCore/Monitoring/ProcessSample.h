#pragma once

#include "VarnetCore/Base/SharedText.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"
#include "VarnetCore/Monitoring/Project.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// One process in one pass. Built once and then immutable; the snapshot, its groups and its services share
/// it as a SampleRef. An empty optional means not known, never zero.
struct ProcessSample {
    ProcessIdentity id;
    std::int32_t parentPID = 0;
    std::uint32_t uid = 0;
    SharedText name;                     ///< short process name
    SharedText executable;               ///< full path; empty when unknown
    SharedTexts arguments;               ///< empty for other users' processes and until first read
    std::optional<SharedText> cwd;       ///< working directory
    std::optional<double> cpu;           ///< percent of one core just now; four busy cores read 400
    std::optional<double> averageCPU;    ///< percent of one core, time-weighted over 30 s
    std::optional<std::uint64_t> memory; ///< bytes
    std::optional<double> energyImpact;  ///< energy score averaged over 30 s; has no unit
    std::optional<double> instantaneousEnergyImpact;
    std::vector<int> ports;                 ///< TCP ports it listens on
    bool portsAvailable = false;            ///< false: the ports could not be read, which is not "no ports"
    std::shared_ptr<const Project> project; ///< null: none
    std::shared_ptr<const Attribution> attribution;           ///< null: none
    std::shared_ptr<const ApplicationDescriptor> application; ///< null: none
    bool isSystem = false;

    bool isDevelopment() const;
    /// Display name of the server framework it runs, if one is recognised.
    std::optional<std::string> framework() const;
    /// The framework; else, with ports, the name followed by " server"; else the name.
    std::string serviceName() const;
};

/// Shares a sample without copying it. Never null inside a snapshot.
using SampleRef = std::shared_ptr<const ProcessSample>;

/// Whether two processes work in the same project: both in none, or both in one of the same root.
bool inSameProject(const ProcessSample& a, const ProcessSample& b) noexcept;

} // namespace varnet
