#include "VarnetApp/DetailInspector/DetailTexts.h"

#include "VarnetCore/Base/Display.h"

#include <QStringList>

namespace varnet::DetailTexts {

QString subtitle(const ApplicationGroup& group) {
    if (group.kind == GroupKind::system) return "System process · managed by macOS";
    return QString::fromStdString(group.subtitle);
}

QString subtitle(const Service& service, Date now) {
    return "Local server · running " +
           QString::fromStdString(Display::duration(service.root->id.startedAt(), now));
}

QString origin(const Attribution* attribution) {
    if (attribution) {
        const QString agent = QString::fromStdString(attribution->agent);
        if (attribution->confidence == Confidence::observed) return "Started by " + agent;
        if (attribution->confidence == Confidence::likely) return "Likely started by " + agent;
    }
    return "We couldn’t identify which app started this server.";
}

QString agentLeft(const Attribution* attribution, Date now) {
    if (!attribution || !attribution->exitedAt) return {};
    return "Agent left " + QString::fromStdString(Display::duration(*attribution->exitedAt, now)) +
           " ago. This server is still running.";
}

QString ports(const std::vector<int>& ports) {
    QStringList numbers;
    for (const int port : ports)
        numbers.append(QString::number(port));
    return "Ports: " + numbers.join(", ");
}

QString worktree(const Project& project) {
    return "Worktree: " + QString::fromStdString(project.worktree);
}

QString processes(std::size_t count) {
    return "Processes (" + QString::number(count) + ")";
}

QString executable(const ProcessSample& process) {
    if (process.executable.empty()) return "Executable unavailable";
    return QString::fromStdString(process.executable.str());
}

QString workingDirectory(const ProcessSample& process) {
    if (!process.cwd || process.cwd->empty()) return "Working directory unavailable";
    return QString::fromStdString(process.cwd->str());
}

QString address(int port) {
    return "http://localhost:" + QString::number(port);
}

} // namespace varnet::DetailTexts
