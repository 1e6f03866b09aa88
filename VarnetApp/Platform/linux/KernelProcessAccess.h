#pragma once

#include "VarnetApp/Platform/linux/ProcessAccess.h"
#include "probes/vn_probes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

namespace varnet::platform {

/// The running kernel's processes, through the probes.
class KernelProcessAccess final : public ProcessAccess {
public:
    std::optional<std::vector<RunningProcess>> processes() override;
    std::optional<Identity> identity(std::int32_t pid) override;
    std::string executable(std::int32_t pid) override;
    std::string controlGroup(std::int32_t pid) override;

private:
    struct CloseTable {
        void operator()(VNTable* table) const noexcept { vn_table_close(table); }
    };

    /// Kept, so that each listing but the first reads only what ran since.
    std::unique_ptr<VNTable, CloseTable> table_;
    std::unordered_map<std::int32_t, std::string> paths_; ///< as of the last listing
};

} // namespace varnet::platform
