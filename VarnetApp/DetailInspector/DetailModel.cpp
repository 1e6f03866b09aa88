#include "VarnetApp/DetailInspector/DetailModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/MainViews/ListTexts.h"
#include "VarnetApp/Platform/FileOpening.h"
#include "VarnetCore/Findings/GroupServices.h"

#include <algorithm>

namespace varnet {

namespace {

QString words(const std::string& text) {
    return QString::fromStdString(text);
}

QString iconOf(FindingKind kind) {
    switch (kind) {
    case FindingKind::highCPU:
        return "flame";
    case FindingKind::forgotten:
        return "moon";
    case FindingKind::duplicate:
        return "duplicate";
    case FindingKind::restarted:
        break;
    }
    return "refresh";
}

bool isAbout(const Finding& finding, const ProcessIdentity& root) {
    return std::ranges::find(finding.targets, root) != finding.targets.end();
}

bool belongs(const Service& service, const ApplicationGroup& group) {
    if (group.kind == GroupKind::project) return worksIn(service, group);
    return std::ranges::any_of(group.processes,
                               [&](const SampleRef& process) { return process->id == service.root->id; });
}

} // namespace

void DetailModel::begin() {
    figures_ = Figures(context().localization.locale());
    connect(&store(), &VarnetStore::snapshotChanged, this, &DetailModel::refresh);
    connect(&store(), &VarnetStore::selectionChanged, this, &DetailModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, [this] {
        figures_ = Figures(context().localization.locale());
        processes_.retell();
        refresh();
    });
    refresh();
}

const ApplicationGroup* DetailModel::selectedGroup() const {
    const auto& groups = store().snapshot().groups;
    const auto found = std::ranges::find(groups, store().selectedGroup().value_or(""), &ApplicationGroup::id);
    return found == groups.end() ? nullptr : &*found;
}

const Service* DetailModel::selectedService() const {
    return store().stopping().publishedService(store().selectedService().value_or(""));
}

void DetailModel::refresh() {
    const auto& service = store().selectedService();
    const auto& group = store().selectedGroup();
    const std::string selected = service ? *service : group.value_or("");
    if (selected != selected_) {
        selected_ = selected;
        setShowProcesses(false);
    }
    if (selected.empty()) {
        if (!isOpen_) return;
        // What was shown stays until the inspector has slid away.
        isOpen_ = false;
        emit openChanged();
        return;
    }
    Shown shown;
    shown.gone = true;
    if (service) {
        if (const Service* const found = selectedService()) shown = describe(*found);
    } else if (const ApplicationGroup* const found = selectedGroup()) {
        shown = describe(*found);
    }
    if (shown.gone) {
        facts_.update({});
        addresses_.update({});
        servers_.update({});
        processes_.update({});
    }
    if (!(shown == shown_)) {
        shown_ = std::move(shown);
        emit changed();
    }
    if (isOpen_) return;
    isOpen_ = true;
    emit openChanged();
}

DetailModel::Shown DetailModel::describe(const ApplicationGroup& group) {
    const MonitorSnapshot& snapshot = store().snapshot();
    Shown shown;
    shown.title = words(group.name);
    shown.subtitle = DetailTexts::subtitle(group);
    shown.tile = tileFor(rowKindOf(group), shown.title);
    shown.barTone = varnet::barTone(rowKindOf(group));
    describeUse(shown, snapshot.normalized(group.cpu()), group.memory());
    const auto finding = std::ranges::find_if(snapshot.findings, [&](const Finding& one) {
        return one.groupID == group.id && one.kind == FindingKind::highCPU;
    });
    if (finding != snapshot.findings.end()) {
        shown.findingTitle = words(finding->title);
        shown.findingText = words(finding->explanation);
        shown.findingIcon = iconOf(finding->kind);
    }
    facts_.update({});
    addresses_.update({});

    std::vector<DetailServerRow> servers;
    for (const Service& service : snapshot.services) {
        if (!belongs(service, group)) continue;
        const bool stoppable = !store().stopping().batchRequests(service).empty();
        servers.push_back(
            {service.id(), words(service.name()), words(ListTexts::portNumbers(service)), stoppable,
             stoppable ? QString() : words(store().stopping().stopUnavailableReason(*service.root))});
    }
    if (group.kind != GroupKind::system) {
        shown.serversText = servers.empty() ? "No running servers to stop. Editors and AI agents stay open."
                                            : "Stop a server here without closing your editor or AI agent.";
    }
    servers_.update(std::move(servers));
    if (group.application) shown.applicationPath = words(group.application->bundlePath);
    describeProject(shown, group.project.get());
    shown.detailsTitle = "Individual workers and technical details";
    shown.processesTitle = DetailTexts::processes(group.processes.size());
    listProcesses(group.processes);
    if (group.kind == GroupKind::unassigned && group.processes.size() == 1) {
        shown.stopTitle = "Stop process";
        shown.stoppable = store().stopping().canStop(*group.processes.front());
        shown.stopHelp = words(shown.stoppable ? ListTexts::stopHelp(group)
                                               : store().stopping().stopUnavailableReason(group));
    }
    return shown;
}

DetailModel::Shown DetailModel::describe(const Service& service) {
    const MonitorSnapshot& snapshot = store().snapshot();
    const StopOperations& stopping = store().stopping();
    Shown shown;
    shown.isService = true;
    shown.title = words(service.name());
    shown.subtitle = DetailTexts::subtitle(service, snapshot.date);
    shown.tile =
        tileFor(stopping.isForgotten(service) ? RowKind::forgottenServer : RowKind::server, shown.title);
    shown.barTone = varnet::barTone(RowKind::server);
    describeUse(shown, snapshot.normalized(service.cpu()), service.memory());

    const Attribution* const origin = service.root->attribution.get();
    const QString agentLeft = DetailTexts::agentLeft(origin, snapshot.date);
    const auto finding = std::ranges::find_if(
        snapshot.findings, [&](const Finding& one) { return isAbout(one, service.root->id); });
    const bool forgotten = finding != snapshot.findings.end() && finding->kind == FindingKind::forgotten;
    if (finding != snapshot.findings.end()) {
        shown.findingTitle = words(finding->title);
        shown.findingText = forgotten && !agentLeft.isEmpty() ? agentLeft : words(finding->explanation);
        shown.findingIcon = iconOf(finding->kind);
    }

    std::vector<FactRow> facts{{"agent", DetailTexts::origin(origin), origin != nullptr}};
    if (!agentLeft.isEmpty() && !forgotten) facts.push_back({"moon", agentLeft});
    const std::vector<int> ports = service.ports();
    if (!ports.empty()) facts.push_back({"globe", DetailTexts::ports(ports)});
    if (const auto& project = service.project()) {
        facts.push_back({"projects", DetailTexts::worktree(*project)});
        facts.push_back({"folder", words(project->name)});
    } else {
        facts.push_back({"folder", "No project identified"});
    }
    facts_.update(std::move(facts));
    std::vector<AddressRow> addresses;
    for (const int port : ports)
        addresses.push_back({std::to_string(port), port});
    addresses_.update(std::move(addresses));
    servers_.update({});

    describeProject(shown, service.project().get());
    shown.detailsTitle = "Technical details";
    shown.processesTitle = DetailTexts::processes(service.members.size());
    listProcesses(service.members);
    shown.stopTitle = "Stop server";
    shown.stoppable = stopping.canStop(*service.root);
    shown.stopHelp =
        words(shown.stoppable ? ListTexts::stopHelp(service) : stopping.stopUnavailableReason(*service.root));
    return shown;
}

void DetailModel::describeUse(Shown& shown, std::optional<double> cpu,
                              std::optional<std::uint64_t> memory) const {
    const auto whole = static_cast<double>(store().snapshot().physicalMemory);
    shown.cpu = figures_.percent(cpu);
    shown.memory = figures_.memory(memory);
    shown.cpuShare = cpu.value_or(0) / 100;
    shown.memoryShare = memory && whole > 0 ? static_cast<double>(*memory) / whole : 0;
}

void DetailModel::describeProject(Shown& shown, const Project* project) const {
    if (!project) return;
    shown.folder = words(project->root);
    shown.worktree = DetailTexts::worktree(*project);
}

void DetailModel::listProcesses(std::span<const SampleRef> processes) {
    processes_.update(showProcesses_ ? processRows(processes, figures_) : std::vector<DetailProcessRow>());
}

void DetailModel::setShowProcesses(bool shown) {
    if (shown == showProcesses_) return;
    showProcesses_ = shown;
    emit showProcessesChanged();
    if (const Service* const service = selectedService()) {
        listProcesses(service->members);
    } else if (const ApplicationGroup* const group = selectedGroup()) {
        listProcesses(group->processes);
    }
}

void DetailModel::close() {
    store().select(std::nullopt, std::nullopt);
}

void DetailModel::stop() {
    if (shown_.isService) {
        if (const Service* const service = selectedService()) store().stopping().prepareStop(*service);
    } else if (const ApplicationGroup* const group = selectedGroup()) {
        store().stopping().reviewStop(*group);
    }
}

void DetailModel::stopServer(const QString& key) {
    if (const Service* const service = store().stopping().publishedService(key.toStdString()))
        store().stopping().prepareStop(*service);
}

void DetailModel::openServer(const QString& key) {
    store().select(std::nullopt, key.toStdString());
    store().setPage(Page::servers);
}

void DetailModel::openInBrowser(int port) {
    if (context().files) context().files->openUrl(DetailTexts::address(port).toStdString());
}

void DetailModel::showApp() {
    if (context().files) context().files->revealFile(shown_.applicationPath.toStdString());
}

void DetailModel::revealFolder() {
    if (context().files) context().files->revealFile(shown_.folder.toStdString());
}

} // namespace varnet
