#pragma once

#include "VarnetApp/Platform/linux/LinuxApplicationCatalog.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/TemporaryFolder.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace varnet::platform {

/// A machine with a process table and installed applications, and the catalogue over it.
class FakeMachine {
public:
    static constexpr std::uint32_t uid = 1000;

    struct Row {
        RunningProcess process;
        std::string executable;
        std::string controlGroup;
    };

    void install(const std::string& id, const std::string& more) const {
        folder.write("share/applications/" + id + ".desktop",
                     "[Desktop Entry]\nType=Application\nName=" + id + "\n" + more + "\n");
    }
    std::string desktopFile(const std::string& id) const {
        return folder.path("share/applications/" + id + ".desktop");
    }

    /// @param start orders the processes in time
    void run(std::int32_t pid, std::int32_t parent, std::uint64_t start, const std::string& executable,
             const std::string& path, std::uint32_t owner = uid) {
        rows[pid] = {{pid, parent, owner, start}, executable, "0::" + path + "\n"};
    }

    /// In the user's own service manager.
    static std::string managed(const std::string& below) {
        return "/user.slice/user-1000.slice/user@1000.service/app.slice/" + below;
    }

    LinuxApplicationCatalog catalog(std::unique_ptr<UnitEvents> events) {
        return LinuxApplicationCatalog(
            {.clock = clock,
             .access = std::make_unique<Access>(*this),
             .events = std::move(events),
             .places = {.applications = {folder.path("share/applications")}, .programs = {}, .locale = {}},
             .uid = uid});
    }

    FakeClock clock;
    std::map<std::int32_t, Row> rows;
    std::map<std::int32_t, ProcessAccess::Identity>
        reused;                    ///< what a pid has become since the table was read
    std::set<std::int32_t> exited; ///< those that have ended since then
    bool tableFails = false;
    int listings = 0;
    TemporaryFolder folder;

private:
    class Access final : public ProcessAccess {
    public:
        explicit Access(FakeMachine& machine) : machine_(machine) {}

        std::optional<std::vector<RunningProcess>> processes() override {
            ++machine_.listings;
            if (machine_.tableFails) {
                return std::nullopt;
            }
            std::vector<RunningProcess> list;
            for (const auto& [pid, row] : machine_.rows) {
                list.push_back(row.process);
            }
            return list;
        }
        std::optional<Identity> identity(std::int32_t pid) override {
            if (const auto other = machine_.reused.find(pid); other != machine_.reused.end()) {
                return other->second;
            }
            const auto row = machine_.rows.find(pid);
            if (row == machine_.rows.end() || machine_.exited.contains(pid)) {
                return std::nullopt;
            }
            return Identity{row->second.process.start, row->second.process.uid};
        }
        std::string executable(std::int32_t pid) override { return machine_.rows.at(pid).executable; }
        std::string controlGroup(std::int32_t pid) override { return machine_.rows.at(pid).controlGroup; }

    private:
        FakeMachine& machine_;
    };
};

/// "id@pid" of each, in order.
inline std::set<std::string> listed(ApplicationCatalog& catalog) {
    std::set<std::string> names;
    for (const ApplicationDescriptor& descriptor : catalog.snapshot()) {
        names.insert(descriptor.bundleID + "@" + std::to_string(descriptor.pid));
    }
    return names;
}

} // namespace varnet::platform
