#pragma once

#include "VarnetApp/Updates/UpdateFramework.h"

#include <utility>

namespace varnet::test {

/// An update framework that tells what a test tells it to, and counts what it is asked for.
class FakeUpdateFramework final : public UpdateFramework {
public:
    Handlers handlers;
    std::optional<QString> error; ///< of starting; empty: it works
    int starts = 0;
    int checks = 0;
    int openings = 0;
    bool busy = false;
    bool automatic = true;
    std::optional<Date> lastCheck;

    void listen(Handlers given) override { handlers = std::move(given); }
    std::optional<QString> start() override {
        ++starts;
        return error;
    }
    bool canCheckForUpdates() const override { return !busy; }
    bool sessionInProgress() const override { return busy; }
    bool automaticallyChecksForUpdates() const override { return automatic; }
    void setAutomaticallyChecksForUpdates(bool value) override { automatic = value; }
    std::optional<Date> lastUpdateCheckDate() const override { return lastCheck; }
    void checkForUpdates() override { ++checks; }
    void openUpdate() override { ++openings; }
};

} // namespace varnet::test
