#include "VarnetApp/MainViews/GroupListModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"

#include <algorithm>
#include <set>

namespace varnet {

namespace {

/// "All agents", then those of the groups; the one that is filtered by stays, or nobody could clear it.
QStringList agentsOf(const std::vector<const ApplicationGroup*>& groups, const QString& chosen) {
    std::set<std::string> names;
    for (const ApplicationGroup* group : groups)
        for (std::string& name : group->agents())
            names.insert(std::move(name));
    const QString all = QLatin1String(GroupFilter::allAgents);
    if (chosen != all) names.insert(chosen.toStdString());
    QStringList agents{all};
    for (const std::string& name : names)
        agents.append(QString::fromStdString(name));
    return agents;
}

} // namespace

Page GroupListModel::page() const {
    return store().page();
}

ActivityListModel::Contents GroupListModel::contents() {
    Contents shown;
    const MonitorSnapshot& snapshot = store().snapshot();
    const StopOperations& stopping = store().stopping();
    const bool byMemory = memoryFirst();
    const auto weight = [&](const ApplicationGroup& group) -> std::optional<double> {
        if (!byMemory) return group.cpu();
        const auto memory = group.memory();
        return memory ? std::optional(static_cast<double>(*memory)) : std::nullopt;
    };
    double busiest = 0;
    for (const ApplicationGroup& group : snapshot.groups)
        busiest = std::max(busiest, weight(group).value_or(0));

    const auto groups = store().filteredGroups();
    shown.rows.reserve(groups.size());
    for (const ApplicationGroup* group : groups) {
        auto requests = stopping.batchRequests(*group);
        shown.rows.push_back(rowFor(*group, !requests.empty()));
        shown.rows.back().share = barShare(weight(*group), busiest);
        if (!requests.empty()) shown.candidates.emplace(group->id, std::move(requests));
    }
    shown.agents = agentsOf(store().groupsOfPage(), store().agentFilter());
    shown.filtered =
        !store().search().isEmpty() || store().agentFilter() != QLatin1String(GroupFilter::allAgents);
    return shown;
}

ActivityRow GroupListModel::rowFor(const ApplicationGroup& group, bool stoppable) const {
    ActivityRow row;
    row.key = group.id;
    row.kind = rowKindOf(group);
    row.name = group.name;
    row.subtitle = ListTexts::subtitle(group);
    row.ports = ListTexts::portText(group.ports().size());
    row.agents = group.agents();
    row.cpu = store().snapshot().normalized(group.cpu());
    row.memory = group.memory();
    row.open = store().selectedGroup() == group.id;
    row.stoppable = stoppable;
    if (stoppable) {
        row.stopHelp = ListTexts::stopHelp(group);
    } else {
        row.stopReason = store().stopping().stopUnavailableReason(group);
    }
    row.telling = &telling();
    return row;
}

const ApplicationGroup* GroupListModel::find(const QString& key) const {
    const auto& groups = store().snapshot().groups;
    const auto found = std::ranges::find(groups, key.toStdString(), &ApplicationGroup::id);
    return found == groups.end() ? nullptr : &*found;
}

void GroupListModel::open(const QString& key) {
    if (const ApplicationGroup* const group = find(key)) store().inspect(*group);
}

void GroupListModel::stop(const QString& key) {
    const ApplicationGroup* const group = find(key);
    if (group) store().stopping().reviewStop(*group);
}

} // namespace varnet
