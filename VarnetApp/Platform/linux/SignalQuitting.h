#pragma once

#include "VarnetApp/Platform/ApplicationCatalog.h"
#include "VarnetApp/Platform/ApplicationQuitting.h"

namespace varnet::platform {

/// Quits applications by signals to their main process, each checked against its identity.
class SignalQuitting final : public ApplicationQuitting {
public:
    /// @param catalog outlives this
    explicit SignalQuitting(ApplicationCatalog& catalog) : catalog_(catalog) {}

    std::optional<Identity> identity(std::int32_t pid) override;
    std::int32_t exists(std::int32_t pid) override;
    std::unique_ptr<QuittableApplication> find(std::int32_t pid) override;

private:
    ApplicationCatalog& catalog_;
};

} // namespace varnet::platform
