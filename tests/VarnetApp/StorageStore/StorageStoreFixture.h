#pragma once

#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "probes/SystemProbes.h"
#include "tests/fakes/FakeFileOpening.h"
#include "tests/fakes/GitCheckoutFolder.h"
#include "tests/fakes/HandQueue.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

/// Takes folders into a folder beside, but for those that it is told to refuse.
class BesideTrash final : public Trash {
public:
    explicit BesideTrash(std::string folder) : folder_(std::move(folder)) {}

    std::expected<std::optional<std::string>, std::string> moveToTrash(const std::string& path,
                                                                       const DiskIdentity&) override {
        if (refused.contains(path)) return std::unexpected("The Trash is full.");
        std::filesystem::create_directories(folder_);
        const std::string to = folder_ + "/" + std::to_string(++count_);
        std::filesystem::rename(path, to);
        return to;
    }

    std::set<std::string> refused;

private:
    const std::string folder_;
    int count_ = 0;
};

/// The store over a real home with real repositories; its threads are turned by hand.
class StorageStoreFixture : public testing::Test {
protected:
    StorageStoreFixture() { make(); }

    void make(bool preview = false) {
        store.reset();
        store = std::make_unique<DiskStorageStore>(
            DiskStorageStore::Setup{
                .probes = probes,
                .clock = clock,
                .mainQueue = main,
                .jobs = jobs,
                .home = home.home(),
                .defaults = &defaults,
                .files = &files,
                .trash = &trash,
                .preview = preview,
                .git = StorageGit(home.home()),
                .didClean = [this](std::size_t folders,
                                   std::uint64_t bytes) { credited.emplace_back(folders, bytes); }},
            wholeDisk);
    }
    /// Lets everything that was begun come to its end.
    void settle() {
        while (jobs.waiting() > 0 || main.waiting() > 0) {
            jobs.run();
            main.advance(1);
        }
    }
    /// A repository below the home with dependencies in it, and in each of its packages.
    void makeProject(const std::string& below, const std::vector<std::string>& packages = {}) const {
        home.makeRepository(below);
        home.write(below + "/node_modules/a/file", std::string(20'000, 'x'));
        for (const std::string& package : packages) {
            home.write(below + "/" + package + "/package.json", "{}");
            home.write(below + "/" + package + "/node_modules/b/file", std::string(9'000, 'x'));
        }
    }
    const StorageProject* project(const std::string& below) const {
        if (!store->scan()) return nullptr;
        for (const StorageProject& each : store->scan()->projects)
            if (each.path == home.path(below)) return &each;
        return nullptr;
    }

    GitCheckoutFolder home;
    FakeClock clock;
    HandQueue main{clock};
    HandQueue jobs{clock};
    SystemProbes probes;
    QSettings defaults{QString::fromStdString(home.path("settings.ini")), QSettings::IniFormat};
    FakeFileOpening files;
    BesideTrash trash{home.path("trash")};
    WholeDiskStore wholeDisk{{.probes = probes,
                              .clock = clock,
                              .mainQueue = main,
                              .scans = jobs,
                              .questions = jobs,
                              .preview = true}};
    std::vector<std::pair<std::size_t, std::uint64_t>> credited;
    std::unique_ptr<DiskStorageStore> store;
};

} // namespace varnet
