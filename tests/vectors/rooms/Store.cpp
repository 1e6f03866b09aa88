#include "VarnetApp/AppStore/ItemCount.h"
#include "VarnetApp/AppStore/NotificationRules.h"
#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Page pageOf(const Json& input) {
    const auto page = pageNamed(readText(input, "page"));
    if (!page) throw std::runtime_error("no page: " + readText(input, "page"));
    return *page;
}

Json filteredGroups(const Json& input) {
    GroupFilter filter;
    filter.page = pageOf(input);
    filter.search = QString::fromStdString(readText(input, "search"));
    filter.agent = QString::fromStdString(readText(input, "agentFilter"));
    filter.sort = sortOrderNamed(readText(input, "sort")).value_or(SortOrder::cpu);
    const std::vector<ApplicationGroup> groups = readGroups(at(input, "groups"), at(input, "pool"));
    Json ids = Json::array();
    for (const ApplicationGroup* group : filter.apply(groups))
        ids.push_back(group->id);
    return ids;
}

Json count(const Json& input) {
    const auto counted = itemCount(pageOf(input), readSnapshot(at(input, "snapshot"), at(input, "pool")),
                                   at(input, "unlocked").size());
    return counted ? Json(*counted) : Json(nullptr);
}

Json notices(const Json& input) {
    NotificationDates dates;
    for (const auto& [key, date] : at(input, "notificationDates").items())
        dates[key] = Date{date.get<double>()};
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        Json delivered = Json::array();
        for (const Notice& notice :
             NotificationRules::due(readSnapshot(at(step, "snapshot"), at(input, "pool")),
                                    readDate(step, "now").value_or(Date{}), dates))
            delivered.push_back({{"identifier", notice.key}, {"title", notice.title}, {"body", notice.body}});
        Json kept = Json::object();
        for (const auto& [key, date] : dates)
            kept[key] = date.seconds;
        results.push_back({{"delivered", std::move(delivered)}, {"notificationDates", std::move(kept)}});
    }
    return results;
}

/// A store on prepared data, and what looking into something left in it.
Json inspected(const Json& input, const std::function<void(VarnetStore&)>& inspect) {
    FakeProbes probes;
    FakeClock clock;
    HandQueue queue(clock);
    const TemporaryFolder folder;
    AppLocalization localization(nullptr);
    const Json& given = at(input, "snapshot");
    VarnetStore store({.probes = probes,
                       .clock = clock,
                       .engineQueue = queue,
                       .mainQueue = queue,
                       .localization = localization,
                       .storage = folder.path(),
                       .preview = std::make_shared<MonitorSnapshot>(
                           given.is_null() ? MonitorSnapshot{} : readSnapshot(given, at(input, "pool"))),
                       .collaborators = {}});
    if (!at(input, "page").is_null()) store.setPage(pageOf(input));
    inspect(store);
    Json fields{{"page", store.pageName().toStdString()}};
    fields["selectedGroup"] = store.selectedGroup() ? Json(*store.selectedGroup()) : Json(nullptr);
    fields["selectedService"] = store.selectedService() ? Json(*store.selectedService()) : Json(nullptr);
    return fields;
}

Json inspectGroup(const Json& input) {
    return inspected(
        input, [&](VarnetStore& store) { store.inspect(readGroup(at(input, "group"), at(input, "pool"))); });
}

Json inspectFinding(const Json& input) {
    return inspected(input, [&](VarnetStore& store) { store.inspect(readFinding(at(input, "finding"))); });
}

Rules moments() {
    Rules rules;
    rules.exactNumbers = true;
    return rules;
}

const Room room{
    {"filteredGroups", answering(filteredGroups)},     {"itemCount", answering(count)},
    {"notifyIfNeeded", answering(notices, moments())}, {"inspect(group)", answering(inspectGroup)},
    {"inspect(finding)", answering(inspectFinding)},
};

} // namespace
} // namespace varnet::vectors
