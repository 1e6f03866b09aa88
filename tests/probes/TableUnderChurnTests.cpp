#include "probes/vn_probes.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/probes/Child.h"
#include "tests/probes/Churn.h"
#include "tests/probes/PidNamespace.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace varnet::probes {

namespace {

/// Pid and start.
using Identity = std::pair<std::int32_t, std::uint64_t>;

struct Fields {
    std::int32_t parent;
    std::uint32_t uid;
    std::uint32_t flags;
    std::string name;
    std::string path;
    std::int32_t hasUsage;
    std::uint64_t cpu;
    std::uint64_t memory;
};

using Processes = std::map<Identity, Fields>;
using Table = std::unique_ptr<VNTable, decltype(&vn_table_close)>;

template <class Entry>
void add(Processes& processes, const Entry& entry) {
    const bool isNew = processes
                           .try_emplace({entry.pid, entry.start},
                                        Fields{entry.parent, entry.uid, entry.flags, entry.name, entry.path,
                                               entry.hasUsage, entry.cpu, entry.memory})
                           .second;
    EXPECT_TRUE(isNew) << entry.pid << " is listed twice";
}

Processes stateless(bool full) {
    VNProcessEntry* entries = nullptr;
    const std::int32_t count = full ? vn_processes(&entries) : vn_process_graph(&entries);
    const std::unique_ptr<VNProcessEntry, decltype(&vn_free)> owner(entries, vn_free);
    EXPECT_GT(count, 0);
    Processes result;
    for (std::int32_t i = 0; i < count; ++i)
        add(result, entries[i]);
    return result;
}

Processes remembered(const Table& table, bool full) {
    const VNTableEntry* entries = nullptr;
    const std::int32_t count = vn_table_read(table.get(), full ? 1 : 0, &entries);
    EXPECT_GT(count, 0);
    Processes result;
    for (std::int32_t i = 0; i < count; ++i)
        add(result, entries[i]);
    return result;
}

/// On the scale of the starts.
std::uint64_t now() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return static_cast<std::uint64_t>(vn_boot_time() + time.tv_sec) * 1'000'000 +
           static_cast<std::uint64_t>(time.tv_nsec) / 1000;
}

/// Holds the table against the stateless lists, taken just before and just after it.
class Comparison {
public:
    /// What the table got wrong, by process.
    std::map<Identity, std::string> compare(bool full) {
        const std::uint64_t begin = now();
        const Processes before = stateless(full);
        const Processes table = remembered(table_, full);
        const Processes after = stateless(full);
        std::map<Identity, std::string> wrong;
        for (const auto& [identity, was] : before) {
            const auto is = after.find(identity);
            if (is == after.end()) continue;
            const auto told = table.find(identity);
            const std::string fault =
                told == table.end() ? " is missing" : faults(identity, was, told->second, is->second);
            if (!fault.empty()) wrong[identity] = fault;
        }
        for (const auto& [identity, told] : table) {
            // One that has begun and ended in between is in neither list. Starts are known to a clock tick.
            if (identity.second + 20'000 >= begin) continue;
            if (!before.contains(identity) && !after.contains(identity)) wrong[identity] = " has ended";
        }
        observe(table, full);
        return wrong;
    }

    /// How often the table saw a process change.
    struct Changes {
        int names, users, parents, paths, starts, ends;
    };
    /// Whether it saw enough of each: a quiet machine would prove nothing. Only the superuser changes users.
    bool sawEverything() const {
        return changes_.starts > 20 && changes_.ends > 20 && changes_.names > 2 && changes_.paths > 0 &&
               changes_.parents > 0 && (changes_.users > 0 || geteuid() != 0);
    }

private:
    std::string faults(const Identity& identity, const Fields& was, const Fields& told,
                       const Fields& is) const {
        std::string result;
        const auto check = [&](const char* what, const auto& first, const auto& middle, const auto& last) {
            if (first == last && middle != first) result += std::string(" ") + what;
        };
        check("parent", was.parent, told.parent, is.parent);
        check("user", was.uid, told.uid, is.uid);
        check("flags", was.flags, told.flags, is.flags);
        // The kernel's own workers are named after their work of the moment, to and fro.
        if (was.flags == 0) check("name", was.name, told.name, is.name);
        check("path", was.path, told.path, is.path);
        check("hasUsage", was.hasUsage, told.hasUsage, is.hasUsage);
        if (was.hasUsage == 1 && told.hasUsage == 1 && is.hasUsage == 1) {
            if (told.cpu < was.cpu || told.cpu > is.cpu) result += " cpu";
            // Memory that the kernel has moved under a sleeper may be half a minute old.
            const auto last = lastFull_.find(identity);
            const bool hasRun = last == lastFull_.end() || last->second.cpu != was.cpu;
            if (hasRun && was.cpu == is.cpu) check("memory", was.memory, told.memory, is.memory);
        }
        return result.empty() ? result : " (" + told.name + ")" + result;
    }

    void observe(const Processes& table, bool full) {
        for (const auto& [identity, fields] : table) {
            const auto was = last_.find(identity);
            if (was == last_.end()) {
                ++changes_.starts;
                continue;
            }
            changes_.names += was->second.name != fields.name ? 1 : 0;
            changes_.users += was->second.uid != fields.uid ? 1 : 0;
            changes_.parents += was->second.parent != fields.parent ? 1 : 0;
            const auto wasFull = lastFull_.find(identity);
            changes_.paths +=
                full && wasFull != lastFull_.end() && wasFull->second.path != fields.path ? 1 : 0;
        }
        for (const auto& [identity, fields] : last_)
            changes_.ends += table.contains(identity) ? 0 : 1;
        last_ = table;
        if (full) lastFull_ = table;
    }

    Table table_{vn_table_open(), vn_table_close};
    Processes last_;
    Processes lastFull_;
    Changes changes_{};
};

TEST(TableUnderChurn, agreesWithTheStatelessLists) {
    const TemporaryFolder images;
    const Churn churn(images.path());
    Comparison comparison;
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    int rounds = 0;
    for (; Clock::now() < begin + std::chrono::seconds(4) || !comparison.sawEverything(); ++rounds) {
        ASSERT_LT(Clock::now(), begin + std::chrono::seconds(100)) << "too little happens";
        const bool full = rounds % 2 == 0;
        const auto wrong = comparison.compare(full);
        if (!wrong.empty()) {
            // What a process does within the last scheduler tick may show one read later, and no later.
            usleep(20'000);
            const auto again = comparison.compare(full);
            for (const auto& [identity, fault] : again) {
                EXPECT_FALSE(wrong.contains(identity))
                    << identity.first << fault << ", before that:" << wrong.at(identity);
            }
        }
        usleep(5000);
    }
    if (geteuid() != 0) std::cout << "not the superuser: no process changed its user\n";
}

/// A pid is given away again and again. Every other process leaves an orphan that must not pass for a child
/// of the next one; those between end within a clock tick, so that two of the same identity follow each
/// other.
std::string reusePid() {
    constexpr pid_t pid = 600;
    const Table table(vn_table_open(), vn_table_close);
    for (int i = 0; i < 24; ++i) {
        const bool leavesOrphan = i % 2 == 0;
        const std::string name = "life-" + std::to_string(i);
        int ready[2];
        if (pipe(ready) != 0) return "no pipe";
        const bool had = forkWithPid(pid, [&] {
            prctl(PR_SET_NAME, name.c_str());
            const pid_t last = leavesOrphan ? fork() : getpid();
            if (last == 0) {
                // Long asleep when its parent ends.
                for (;;)
                    pause();
            }
            if (write(ready[1], &last, sizeof last) != static_cast<ssize_t>(sizeof last)) _exit(1);
        });
        if (!had) return "the pid was not had";
        pid_t last = 0;
        const bool told = read(ready[0], &last, sizeof last) == static_cast<ssize_t>(sizeof last);
        close(ready[0]);
        close(ready[1]);
        if (!told) return "nothing was told";
        if (!eventually([&] { return stateOf(pid) == 'S' && stateOf(last) == 'S'; })) return "not asleep";

        const bool full = i % 3 != 1;
        const Processes lists = stateless(full);
        Processes answer = remembered(table, full);
        if (answer.size() != lists.size()) return "a process too many or too few";
        for (const auto& [identity, fields] : lists) {
            const auto found = answer.find(identity);
            if (found == answer.end()) return std::to_string(identity.first) + " is missing";
            const Fields& entry = found->second;
            if (entry.name != fields.name || entry.parent != fields.parent || entry.path != fields.path)
                return entry.name + " is " + fields.name + ", child of " + std::to_string(fields.parent) +
                       ", running " + fields.path;
        }
        kill(pid, SIGKILL);
        if (waitpid(pid, nullptr, 0) != pid) return "not collected";
        if (leavesOrphan) usleep(15'000);
    }
    return "";
}

TEST(TableUnderChurn, reusedPid) {
    const auto problem = runInPidNamespace(reusePid);
    if (!problem) {
        std::cout << "no pid namespaces here: the prepared kernel stands in\n";
        return;
    }
    EXPECT_EQ(*problem, "");
}

} // namespace

} // namespace varnet::probes
