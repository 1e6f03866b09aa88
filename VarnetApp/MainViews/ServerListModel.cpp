#include "VarnetApp/MainViews/ServerListModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"

#include <algorithm>

namespace varnet {

ActivityListModel::Contents ServerListModel::contents() {
    Contents shown;
    const StopOperations& stopping = store().stopping();
    const bool byMemory = memoryFirst();
    const auto weight = [&](const Service& service) -> std::optional<double> {
        if (!byMemory) return service.cpu();
        const auto memory = service.memory();
        return memory ? std::optional(static_cast<double>(*memory)) : std::nullopt;
    };
    double busiest = 0;
    for (const Service& service : store().snapshot().services)
        busiest = std::max(busiest, weight(service).value_or(0));

    for (const Service* service : store().filteredServices()) {
        auto requests = stopping.batchRequests(*service);
        shown.rows.push_back(rowFor(*service, !requests.empty()));
        shown.rows.back().share = barShare(weight(*service), busiest);
        if (!requests.empty()) shown.candidates.emplace(service->id(), std::move(requests));
    }
    shown.filtered = !store().search().isEmpty();
    return shown;
}

ActivityRow ServerListModel::rowFor(const Service& service, bool stoppable) const {
    const MonitorSnapshot& snapshot = store().snapshot();
    const bool forgotten = store().stopping().isForgotten(service);
    ActivityRow row;
    row.key = service.id();
    row.kind = forgotten ? RowKind::forgottenServer : RowKind::server;
    row.name = service.name();
    row.subtitle = ListTexts::subtitle(service, snapshot.date);
    row.ports = ListTexts::portNumbers(service);
    if (forgotten) row.state = "Possibly forgotten";
    if (service.project()) row.worktree = service.project()->worktree;
    if (service.root->attribution) row.agents = {service.root->attribution->agent};
    row.cpu = snapshot.normalized(service.cpu());
    row.memory = service.memory();
    row.open = store().selectedService() == row.key;
    row.stoppable = stoppable;
    if (stoppable) {
        row.stopHelp = ListTexts::stopHelp(service);
    } else {
        row.stopReason = store().stopping().stopUnavailableReason(*service.root);
    }
    row.telling = &telling();
    return row;
}

void ServerListModel::open(const QString& key) {
    if (store().stopping().publishedService(key.toStdString()))
        store().select(std::nullopt, key.toStdString());
}

void ServerListModel::stop(const QString& key) {
    if (const Service* const service = store().stopping().publishedService(key.toStdString()))
        store().stopping().prepareStop(*service);
}

} // namespace varnet
