#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// One running development server as its user thinks of it.
struct Service {
    SampleRef root;                 ///< the process that stands for the service; never null
    std::vector<SampleRef> members; ///< the root and the workers below it

    std::string id() const { return root->id.id(); }
    std::string name() const { return root->serviceName(); }
    const std::shared_ptr<const Project>& project() const noexcept { return root->project; }
    /// Ascending, each once, over all members.
    std::vector<int> ports() const;
    /// Sum of the members' 30-second averages; empty when all are unknown.
    std::optional<double> cpu() const noexcept;
    /// Bytes; empty when all are unknown or the sum exceeds 64 bits.
    std::optional<std::uint64_t> memory() const noexcept;
};

} // namespace varnet
