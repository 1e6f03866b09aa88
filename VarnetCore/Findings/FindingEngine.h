#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Findings/Finding.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace varnet {

/// Turns a pass into the clues worth a look: groups at work for a minute, servers that outlived their agent,
/// servers that look alike. What came back after the user stopped it is RestartDetection's. Engine queue
/// only.
class FindingEngine {
public:
    /// A group at this many percent of one core or more counts as hard at work.
    static constexpr double highCPULine = 80;
    /// Seconds at or over the line before a group is reported.
    static constexpr double sustained = 60;
    /// Seconds since a server's agent exited, and seconds since the server started, before it is reported.
    static constexpr double agentGone = 1800;
    static constexpr double serverAge = 7200;

    /// The findings of a pass: by kind (high CPU, similar servers, forgotten servers), then by id.
    std::vector<Finding> evaluate(std::span<const ApplicationGroup> groups, std::span<const Service> services,
                                  std::span<const SampleRef> processes, Date now);

    /// Starts every minute over: time asleep is no time at work.
    void reset() noexcept { highSince_.clear(); }

    /// Since when each instance has stayed at or over the line. An instance is a group's id, ":" and its
    /// oldest process's start (0 without processes): a new run of the same application is a new instance.
    std::map<std::string, Date> highSince() const;

    /// A command as text that does not tell ports apart: the values of "--port", "-p" and "--port=" are
    /// replaced, the arguments joined with tabs.
    static std::string normalizedCommand(std::span<const std::string> arguments);

private:
    /// Looked up without building text: nearly every group is idle and never gets an entry.
    struct InstanceView {
        std::string_view groupID;
        std::uint64_t start;
        friend bool operator==(const InstanceView&, const InstanceView&) = default;
    };
    struct Instance {
        std::string groupID;
        std::uint64_t start;
        operator InstanceView() const noexcept { return {groupID, start}; }
    };
    struct InstanceHash {
        using is_transparent = void;
        std::size_t operator()(const InstanceView& instance) const noexcept {
            // Starts alone nearly always differ: an id need not be read to see that a group has no entry.
            return std::hash<std::uint64_t>()(instance.start ^ (instance.groupID.size() << 56U));
        }
    };
    struct SameInstance {
        using is_transparent = void;
        bool operator()(const InstanceView& a, const InstanceView& b) const noexcept { return a == b; }
    };
    struct High {
        Date since;
        std::uint64_t pass; ///< the last pass that saw it
    };

    void findHighCPU(std::span<const ApplicationGroup> groups, Date now, std::vector<Finding>& findings);

    std::unordered_map<Instance, High, InstanceHash, SameInstance> highSince_;
    std::uint64_t pass_ = 0;
};

} // namespace varnet
