#pragma once

#include "VarnetApp/Platform/linux/ProcessAccess.h"

namespace varnet::platform {

/// The running kernel's processes, through the probes.
class KernelProcessAccess final : public ProcessAccess {
public:
    std::optional<std::vector<RunningProcess>> processes() override;
    std::optional<Identity> identity(std::int32_t pid) override;
    std::string executable(std::int32_t pid) override;
    std::string controlGroup(std::int32_t pid) override;
};

} // namespace varnet::platform
