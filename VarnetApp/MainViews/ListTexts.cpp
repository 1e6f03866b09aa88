#include "VarnetApp/MainViews/ListTexts.h"

#include "VarnetCore/Base/Display.h"

namespace varnet::ListTexts {

Head head(Page page) {
    switch (page) {
    case Page::apps:
        return {"Your apps, biggest appetite first.", "Apps, helpers and system processes.",
                "Search apps and processes"};
    case Page::projects:
        return {"Your projects. Accounted for.", "Agents, worktrees and their running services.",
                "Search apps and processes"};
    case Page::servers:
        return {"Servers still running.", "See who started them. Stop what you’re done with.",
                "Search servers, projects or ports"};
    default:
        return {"All sources. One place to point fingers.",
                "Apps, projects and background processes. Servers are included in their groups.",
                "Search apps and processes"};
    }
}

QString note(const QString& count) {
    return count + " · CPU: 30s average, whole Mac";
}

Notice empty(Page page, bool filtered) {
    if (page == Page::servers) {
        if (filtered) return {"search", "No matching servers", "Try a different name, project or port."};
        return {"servers", "No servers running",
                "Start a local development server. It will appear here automatically."};
    }
    if (filtered) return {"search", "No matches", "Try another search or clear the filters."};
    if (page == Page::projects) {
        return {"folder", "No projects running",
                "Start a development process as usual. We’ll find its project automatically."};
    }
    return {"hourglass", "No apps yet", "Waiting for the first measurement."};
}

Notice unavailable() {
    return {"warning", "Measurements unavailable",
            "We’ll retry automatically. No readings are being assumed.", true};
}

std::string portText(std::size_t count) {
    if (count == 0) return {};
    return std::to_string(count) + (count == 1 ? " port" : " ports");
}

std::string portNumbers(const Service& service) {
    const std::vector<int> ports = service.ports();
    return ports.size() == 1 ? ":" + std::to_string(ports.front()) : portText(ports.size());
}

std::string subtitle(const ApplicationGroup& group) {
    return group.incomplete() ? group.subtitle + " · Partial readings" : group.subtitle;
}

std::string subtitle(const Service& service, Date now) {
    const std::string project = service.project() ? service.project()->name : "No project identified";
    return project + " · Running " + Display::duration(service.root->id.startedAt(), now);
}

std::string stopHelp(const ApplicationGroup& group) {
    switch (group.kind) {
    case GroupKind::application:
        return "Review Quit or Force Quit for " + group.name;
    case GroupKind::project:
        return "Review this project’s running servers before stopping. Editors and AI agents stay open.";
    case GroupKind::system:
    case GroupKind::unassigned:
        break;
    }
    return "Review this process and its workers before stopping";
}

std::string stopHelp(const Service&) {
    return "Review this server and its workers before stopping";
}

QString tickLabel(const QString& name) {
    return "Select " + name + " to quit or stop it with other selected items";
}

QString openLabel(const QString& name) {
    return "Open details for " + name;
}

} // namespace varnet::ListTexts
