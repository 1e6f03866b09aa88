#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/SharedText.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace varnet {

/// Turns the flat list of one pass into what the user reads: processes tied to their application, agent and
/// project; groups; running servers. Its state is the lineage, by which a server is still credited to an
/// agent that has gone, and a cache of detection results. Plain logic for one thread.
class SnapshotAssembler {
public:
    struct Result {
        std::vector<SampleRef> processes; ///< in the order of the samples
        std::vector<ApplicationGroup> groups;
        std::vector<Service> services;
    };

    /// @param samples one pass, each process once; `project` is what its own working directory says
    /// @param applications running applications; those whose process is not in the pass are ignored
    /// @param currentUID the user this program runs as
    Result assemble(std::vector<ProcessSample> samples, std::span<const ApplicationDescriptor> applications,
                    Date now, std::uint32_t currentUID);

    /// Who is credited to whom. The engine restores, edits and prunes it between passes.
    std::unordered_map<ProcessIdentity, Attribution> lineage;
};

} // namespace varnet
