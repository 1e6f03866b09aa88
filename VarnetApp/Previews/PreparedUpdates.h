#pragma once

#include "VarnetApp/Updates/UpdateFramework.h"

namespace varnet {

/// An update framework without a network: it says what a picture wants said.
class PreparedUpdates final : public UpdateFramework {
public:
    void nothingNew();
    void found();
    void downloading();
    void ready();
    void aborted();

    void listen(Handlers handlers) override { handlers_ = std::move(handlers); }
    std::optional<QString> start() override { return std::nullopt; }
    bool canCheckForUpdates() const override { return !busy_; }
    bool sessionInProgress() const override { return busy_; }
    bool automaticallyChecksForUpdates() const override { return true; }
    void setAutomaticallyChecksForUpdates(bool) override {}
    std::optional<Date> lastUpdateCheckDate() const override { return lastCheck_; }
    void checkForUpdates() override {}
    void openUpdate() override {}

private:
    void checked();

    Handlers handlers_;
    bool busy_ = false;
    std::optional<Date> lastCheck_;
};

} // namespace varnet
