#include "VarnetApp/AppStore/ItemCount.h"
#include "VarnetApp/AppStore/NotificationRules.h"
#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/vectors/Operations.h"

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
    const auto groups = read<std::vector<ApplicationGroup>>(input, "groups");
    return mapped(filter.apply(groups), [](const ApplicationGroup* group) { return group->id; });
}

auto count(const Json& input) {
    return itemCount(pageOf(input), read<MonitorSnapshot>(input, "snapshot"), at(input, "unlocked").size());
}

Json notices(const Json& input) {
    auto dates = read<NotificationDates>(input, "notificationDates");
    return mapped(at(input, "steps"), [&](const Json& step) -> Json {
        const auto notices =
            NotificationRules::due(read<MonitorSnapshot>(step, "snapshot"), readDate(step, "now"), dates);
        Json delivered = mapped(notices, [](const Notice& notice) -> Json {
            return {{"identifier", notice.key}, {"title", notice.title}, {"body", notice.body}};
        });
        return {{"delivered", std::move(delivered)}, {"notificationDates", written(dates)}};
    });
}

/// A store on prepared data, and what looking into something left in it.
Json inspected(const Json& input, const std::function<void(VarnetStore&)>& inspect) {
    FakeProbes probes;
    FakeClock clock;
    HandQueue queue(clock);
    const TemporaryFolder folder;
    AppLocalization localization(nullptr);
    VarnetStore store({.probes = probes,
                       .clock = clock,
                       .engineQueue = queue,
                       .mainQueue = queue,
                       .localization = localization,
                       .storage = folder.path(),
                       .preview = std::make_shared<MonitorSnapshot>(read<MonitorSnapshot>(input, "snapshot")),
                       .collaborators = {}});
    if (!at(input, "page").is_null()) store.setPage(pageOf(input));
    inspect(store);
    return {{"page", store.pageName().toStdString()},
            {"selectedGroup", written(store.selectedGroup())},
            {"selectedService", written(store.selectedService())}};
}

Json inspectGroup(const Json& input) {
    return inspected(input,
                     [&](VarnetStore& store) { store.inspect(read<ApplicationGroup>(input, "group")); });
}

Json inspectFinding(const Json& input) {
    return inspected(input, [&](VarnetStore& store) { store.inspect(read<Finding>(input, "finding")); });
}

const Room room{
    {"filteredGroups", answering(filteredGroups)},
    {"itemCount", answering(count)},
    {"notifyIfNeeded", answering(notices, {.exactNumbers = true})},
    {"inspect(group)", answering(inspectGroup)},
    {"inspect(finding)", answering(inspectFinding)},
};

} // namespace
} // namespace varnet::vectors
