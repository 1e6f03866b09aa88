#include "VarnetCore/Flame/RoastText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

const ApplicationGroup* groupOf(const RoastContext& context, const MonitorSnapshot& snapshot) {
    if (!context.groupID) return nullptr;
    const auto found = std::ranges::find(snapshot.groups, *context.groupID, &ApplicationGroup::id);
    return found == snapshot.groups.end() ? nullptr : &*found;
}

std::string publicName(const ApplicationGroup& group) {
    return group.kind == GroupKind::project ? "A development project" : group.name;
}

std::string shareOf(const ApplicationGroup* group, const MonitorSnapshot& snapshot) {
    return RoastText::share(group ? snapshot.normalized(group->cpu()) : std::nullopt);
}

std::string rpm(double speed) {
    return fmt::format("{:.0f} RPM", std::trunc(speed));
}

std::string counted(std::size_t count, const char* noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

/// The headline is about what has passed.
std::string presentTruth(const std::string& topic, const MonitorSnapshot& snapshot) {
    if (topic == "thermal" || topic == "warm")
        return "Your Mac recently needed extra cooling. We’re checking that things have settled.";
    if (topic == "takeoff" || topic == "vacuum") {
        if (const auto fastest = snapshot.fans.fastest())
            return "The fans were recently running fast. Fastest now: " + rpm(*fastest) + ".";
        return "The fans were recently running fast. We’re waiting for a fresh reading.";
    }
    return "Your Mac’s workload is changing. CPU now: " + RoastText::share(snapshot.systemCPU) + ".";
}

} // namespace

std::string RoastText::share(std::optional<double> percent) {
    if (!percent) return "—";
    return *percent < 10 ? fmt::format("{:.1f}%", *percent) : fmt::format("{:.0f}%", *percent);
}

std::string RoastText::subject(const RoastContext& context, const MonitorSnapshot& snapshot) {
    const ApplicationGroup* const group = groupOf(context, snapshot);
    return group ? publicName(*group) : "A process";
}

std::string RoastText::explanation(const RoastContext& displayed, const RoastContext& measured,
                                   const MonitorSnapshot& snapshot) {
    const std::string& topic = displayed.topic;
    if (displayed != measured) return presentTruth(topic, snapshot);
    if (topic == "unknown")
        return snapshot.error.value_or("Finding your apps, agents and development servers.");
    if (topic == "thermal")
        return "macOS says your Mac needs to cool down. These readings cannot identify the cause.";
    if (topic == "warm") return "macOS says your Mac needs a little extra cooling.";
    if (topic == "takeoff") return "A fan has been running close to its top speed.";
    if (topic == "vacuum") return "A fan has been running at a high speed.";
    if (topic == "forgotten")
        return "Its observed agent exited over 30 minutes ago. The server is still running.";
    if (topic == "duplicate") return "Similar servers share a worktree and command. They may be intentional.";
    if (topic == "app" || topic == "figma" || topic == "development" || topic == "system") {
        return subject(displayed, snapshot) + " uses " + shareOf(groupOf(displayed, snapshot), snapshot) +
               " of your Mac’s CPU. One of the busiest right now.";
    }
    const std::string cpu = share(snapshot.systemCPU);
    if (topic == "workload") return "Whole Mac CPU: " + cpu + ", spread across multiple processes.";
    if (topic == "fanless") return "Confirmed fanless model · Whole Mac CPU: " + cpu + ".";
    return "Whole Mac CPU: " + cpu + ". No major CPU hog right now.";
}

std::vector<std::string> RoastText::observations(const std::optional<RoastContext>& displayed,
                                                 const MonitorSnapshot& snapshot) {
    std::vector<std::string> facts;
    if (!snapshot.groups.empty() && snapshot.groups.front().cpu()) {
        const ApplicationGroup& top = snapshot.groups.front();
        facts.push_back(publicName(top) + " takes " + shareOf(&top, snapshot) +
                        " of your Mac’s CPU. Top of the bill.");
    }
    if (const auto fastest = snapshot.fans.fastest())
        facts.push_back("Fastest fan: " + rpm(*fastest) + ". The cooling department’s timesheet.");
    if (displayed && displayed->findingID) {
        const auto finding = std::ranges::find(snapshot.findings, *displayed->findingID, &Finding::id);
        if (finding != snapshot.findings.end()) {
            facts.emplace_back(finding->kind == FindingKind::duplicate
                                   ? "Same worktree, similar servers, different ports. A family reunion."
                                   : "An observed agent exited. Its server is still on the clock.");
        }
    }
    if (facts.size() <= 2) {
        facts.push_back(counted(snapshot.services.size(), "local server") + " · " +
                        counted(snapshot.agentCount(), "recognized tool") + ". Quite the entourage.");
    }
    return facts;
}

} // namespace varnet
