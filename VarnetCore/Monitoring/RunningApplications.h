#pragma once

#include "VarnetCore/Monitoring/ApplicationDescriptor.h"
#include "VarnetCore/Monitoring/ProcessChains.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace varnet {

/// The applications of one pass whose main process is among its samples.
class RunningApplications {
public:
    using Ref = std::shared_ptr<const ApplicationDescriptor>;

    RunningApplications(std::span<const ApplicationDescriptor> applications,
                        std::span<const ProcessSample> samples, const ProcessChains& chains);

    bool none() const noexcept { return byPath_.empty(); }

    /// The application that a main process belongs to: its own, or the one whose bundle encloses it. Null for
    /// every other process.
    const Ref& ofMainProcess(std::int32_t position) const noexcept;
    /// The application with that bundle path; null when there is none.
    const Ref& atPath(std::string_view bundlePath) const noexcept;

private:
    std::unordered_map<std::string_view, Ref> byPath_;
    std::vector<Ref> byPosition_; ///< empty when there are no applications
};

} // namespace varnet
