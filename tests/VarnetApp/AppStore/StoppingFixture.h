#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/FakeQuitting.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace varnet {

/// A live store on a pretended machine: a server with two workers in a project, a second server, and two
/// applications. A signal ends what it reaches, unless that is stubborn.
struct PretendedMachine {
    static constexpr std::int32_t server = 100; ///< with workers 101 and 102
    static constexpr std::int32_t other = 200;  ///< another project's server
    static constexpr std::int32_t editor = 300;
    static constexpr std::int32_t mailer = 310;

    struct Told {
        std::string name;
        std::size_t results;
        bool forgotten;
    };

    PretendedMachine() {
        folder.write("shop/package.json", "{}");
        folder.write("blog/package.json", "{}");
        add(server, "node", 1).cwd = folder.path("shop");
        probes.processes[server].ports = {3000};
        for (const std::int32_t worker : {101, 102})
            add(worker, "node", server).cwd = folder.path("shop");
        add(other, "node", 1).cwd = folder.path("blog");
        probes.processes[other].ports = {4000};
        addApplication(editor, "Editor");
        addApplication(mailer, "Mailer");
        probes.ticks = VNCPUTicks{};
        probes.onSignal = [this](std::int32_t pid, std::int32_t signal) {
            if (signal == SIGKILL || pid != stubborn) probes.processes.erase(pid);
        };
        open({.visibleUI = [] { return true; },
              .stopped = [this](const StopPlan& plan, const std::vector<StopResult>& results,
                                bool forgotten) { told.push_back({plan.name, results.size(), forgotten}); }});
    }

    /// A run of the program, with those who take part in it.
    void open(StoreCollaborators collaborators) {
        store.reset();
        store = std::make_unique<VarnetStore>(VarnetStore::Setup{.probes = probes,
                                                                 .clock = clock,
                                                                 .engineQueue = queue,
                                                                 .mainQueue = queue,
                                                                 .localization = localization,
                                                                 .catalog = &catalog,
                                                                 .quitting = &quitting,
                                                                 .storage = folder.path("state"),
                                                                 .preview = nullptr,
                                                                 .collaborators = std::move(collaborators)});
        store->start();
        queue.advance(3);
    }

    FakeProcess& add(std::int32_t pid, const std::string& name, std::int32_t parent) {
        FakeProcess& process = probes.processes[pid];
        process.parent = parent;
        process.start = startOf(pid);
        process.name = name;
        process.path = "/usr/bin/" + name;
        process.arguments = name + "\tserver.js";
        return process;
    }

    void addApplication(std::int32_t pid, const std::string& name) {
        add(pid, name, 1).arguments = name;
        const std::string path = "/usr/share/applications/" + name + ".desktop";
        catalog.running.push_back({path, name, name, pid, startOf(pid)});
        quitting.applications[pid] = {.bundlePath = path};
    }

    std::uint64_t startOf(std::int32_t pid) const {
        return static_cast<std::uint64_t>(probes.boot + 100 + pid) * 1'000'000;
    }

    StopOperations& stopping() { return store->stopping(); }
    std::string message() const { return store->actionMessage().toStdString(); }

    const Service& service(std::int32_t pid) const {
        for (const Service& one : store->snapshot().services)
            if (one.root->id.pid == pid) return one;
        throw std::runtime_error("no such service");
    }
    const ApplicationGroup& group(const std::string& name) const {
        for (const ApplicationGroup& one : store->snapshot().groups)
            if (one.name == name) return one;
        throw std::runtime_error("no group " + name);
    }
    const ApplicationDescriptor& application(std::size_t at) const { return catalog.running[at]; }

    static std::vector<StopOutcome> outcomes(const std::optional<std::vector<StopResult>>& results) {
        std::vector<StopOutcome> list;
        for (const StopResult& result : results.value_or(std::vector<StopResult>{}))
            list.push_back(result.outcome);
        return list;
    }
    /// Pids that were signalled, in order, with this signal.
    std::vector<std::int32_t> signalled(std::int32_t signal) const {
        std::vector<std::int32_t> pids;
        for (const FakeProbes::Signal& sent : probes.sent)
            if (sent.signal == signal) pids.push_back(sent.pid);
        return pids;
    }
    /// The newest line of the history.
    std::string history() {
        queue.advance(1);
        if (store->actions().empty()) return {};
        return store->actions().front().title + " | " + store->actions().front().detail;
    }

    TemporaryFolder folder;
    FakeClock clock;
    HandQueue queue{clock};
    FakeProbes probes;
    FakeCatalog catalog;
    FakeQuitting quitting{probes};
    AppLocalization localization{nullptr};
    std::int32_t stubborn = 0; ///< ignores polite signals
    std::vector<Told> told;
    std::unique_ptr<VarnetStore> store;
};

class StoppingFixture : public testing::Test, protected PretendedMachine {};

} // namespace varnet
