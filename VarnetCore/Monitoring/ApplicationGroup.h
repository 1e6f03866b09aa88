#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

enum class GroupKind { application, project, system, unassigned };

/// "application", "project", "system" or "unassigned".
std::string_view rawValue(GroupKind kind) noexcept;

/// One row of the activity lists. Sums skip unknown members and are empty when all are unknown.
struct ApplicationGroup {
    std::string id; ///< "project:ROOT", "app:PATH" or "process:IDENTITY"
    std::string name;
    std::string subtitle;
    GroupKind kind = GroupKind::unassigned;
    std::vector<SampleRef> processes;
    std::shared_ptr<const ApplicationDescriptor> application; ///< null: none
    std::shared_ptr<const Project> project;                   ///< null: none

    /// Sum of the 30-second averages: the steady figure that lists sort by.
    std::optional<double> cpu() const noexcept;
    std::optional<double> instantaneousCPU() const noexcept;
    /// Bytes; empty also when the sum exceeds 64 bits.
    std::optional<std::uint64_t> memory() const noexcept;
    std::optional<double> energyImpact() const noexcept;
    std::optional<double> instantaneousEnergyImpact() const noexcept;
    /// Ascending, each once.
    std::vector<int> ports() const;
    /// Display names of the agents its processes are credited to, ascending, each once.
    std::vector<std::string> agents() const;
    /// Some process lacks its CPU or memory figure.
    bool incomplete() const noexcept;
    /// Some process lacks its energy score.
    bool energyIncomplete() const noexcept;
};

} // namespace varnet
