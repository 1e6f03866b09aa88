#pragma once

#include "VarnetApp/Platform/ApplicationCatalog.h"
#include "VarnetApp/Platform/ApplicationQuitting.h"
#include "probes/fake/FakeProbes.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

class FakeCatalog final : public ApplicationCatalog {
public:
    std::vector<ApplicationDescriptor> running;

    std::vector<ApplicationDescriptor> snapshot() override { return running; }
};

/// Applications on a pretended machine: asked, and never signalled.
class FakeQuitting final : public platform::ApplicationQuitting {
public:
    struct Application {
        std::string bundlePath;
        bool accepts = true; ///< answers that it was asked
        bool goes = true;    ///< and ends at once
    };

    explicit FakeQuitting(FakeProbes& probes) : probes_(probes) {}

    std::map<std::int32_t, Application> applications; ///< by pid of the main process
    std::vector<std::pair<std::int32_t, bool>> asked; ///< pid, forced

    std::optional<Identity> identity(std::int32_t pid) override {
        const auto found = probes_.identity(pid);
        return found ? std::optional(Identity{found->start, found->uid}) : std::nullopt;
    }
    std::int32_t exists(std::int32_t pid) override { return probes_.exists(pid); }
    std::unique_ptr<platform::QuittableApplication> find(std::int32_t pid) override {
        const auto now = identity(pid);
        if (!applications.contains(pid) || !now) return nullptr;
        return std::make_unique<Handle>(*this, pid, now->start);
    }

private:
    class Handle final : public platform::QuittableApplication {
    public:
        Handle(FakeQuitting& owner, std::int32_t pid, std::uint64_t start)
            : owner_(owner), pid_(pid), start_(start) {}

        std::string bundlePath() const override { return owner_.applications.at(pid_).bundlePath; }
        bool terminate() override { return ask(false); }
        bool forceTerminate() override { return ask(true); }
        bool isTerminated() override {
            const auto now = owner_.identity(pid_);
            return !now || now->start != start_;
        }

    private:
        bool ask(bool forced) {
            owner_.asked.emplace_back(pid_, forced);
            const Application& application = owner_.applications.at(pid_);
            if (application.accepts && application.goes) owner_.probes_.processes.erase(pid_);
            return application.accepts;
        }

        FakeQuitting& owner_;
        const std::int32_t pid_;
        const std::uint64_t start_;
    };

    FakeProbes& probes_;
};

} // namespace varnet
