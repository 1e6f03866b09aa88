#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/SharedText.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace varnet {

class ProcessChains;

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

private:
    /// What the detector says of a process, kept while its texts stay the same.
    struct Detection {
        SharedText executable;
        SharedText name;
        SharedTexts arguments;
        std::string bundle;
        bool development = false;
        std::string_view agent;              ///< display name, lives as long as the program; empty: none
        std::size_t applicationPathSize = 0; ///< length of that path at the front of `executable`; 0: none
        std::shared_ptr<const Attribution> attribution; ///< as last handed out, to be shared while it holds
        std::uint64_t pass = 0;                         ///< the last pass that saw the process
    };
    class Pass;

    Detection& detect(const ProcessSample& sample, std::string_view bundle);
    void forgetUnseen();

    std::unordered_map<ProcessIdentity, Detection> detections_;
    std::uint64_t pass_ = 0; ///< passes so far
    std::size_t seen_ = 0;   ///< entries of detections_ that this pass has used
};

} // namespace varnet
