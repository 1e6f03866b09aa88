#include "VarnetApp/Previews/ListScreens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/MainViews/ActivityListModel.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetCore/Findings/BatchStopPlanner.h"
#include "VarnetCore/Findings/StopPlanner.h"

#include <QQuickItem>

#include <algorithm>
#include <array>
#include <initializer_list>

namespace varnet {

namespace {

constexpr QSize window{1040, 720};
constexpr QSize smallWindow{760, 560};
constexpr QSize leastWindow{720, 520};

using Prepare = std::function<void(VarnetStore&)>;
using Touch = std::function<void(QQuickItem&)>;

const ApplicationGroup* groupNamed(VarnetStore& store, const std::string& name) {
    const auto& groups = store.snapshot().groups;
    const auto found = std::ranges::find(groups, name, &ApplicationGroup::name);
    return found == groups.end() ? nullptr : &*found;
}

const Service* serverNamed(VarnetStore& store, const std::string& name) {
    const auto& services = store.snapshot().services;
    const auto found =
        std::ranges::find_if(services, [&](const Service& service) { return service.name() == name; });
    return found == services.end() ? nullptr : &*found;
}

Prepare onPage(Page page) {
    return [page](VarnetStore& store) { store.setPage(page); };
}

Prepare detailOf(Page page, const std::string& name) {
    return [page, name](VarnetStore& store) {
        store.setPage(page);
        if (const ApplicationGroup* const group = groupNamed(store, name))
            store.select(group->id, std::nullopt);
    };
}

Prepare detailOfServer(const std::string& name) {
    return [name](VarnetStore& store) {
        store.setPage(Page::servers);
        if (const Service* const service = serverNamed(store, name))
            store.select(std::nullopt, service->id());
    };
}

Prepare searching(Page page, const QString& text) {
    return [page, text](VarnetStore& store) {
        store.setPage(page);
        store.setSearch(text);
    };
}

Prepare byAgent(const QString& agent) {
    return [agent](VarnetStore& store) {
        store.setPage(Page::projects);
        store.setAgentFilter(agent);
    };
}

Prepare sortedBy(Page page, const QString& order) {
    return [page, order](VarnetStore& store) {
        store.setPage(page);
        store.setSortName(order);
    };
}

Prepare all(std::initializer_list<Prepare> steps) {
    return [steps = std::vector<Prepare>(steps)](VarnetStore& store) {
        for (const Prepare& step : steps)
            step(store);
    };
}

/// Ticks the rows with these names.
Touch ticking(std::initializer_list<const char*> names) {
    return [names = std::vector<QString>(names.begin(), names.end())](QQuickItem& root) {
        auto* const model = root.findChild<ActivityListModel*>();
        if (!model) return;
        for (int row = 0; row < model->rows()->rowCount(); ++row) {
            const QString key = model->keyAt(row);
            const QString title = model->rows()->index(row, 0).data(Qt::UserRole + 1).toString();
            if (std::ranges::find(names, title) != names.end()) model->selection()->toggle(key);
        }
    };
}

Touch unfolding(const QString& name) {
    return [name](QQuickItem& root) {
        const auto items = root.findChildren<QQuickItem*>(name);
        for (QQuickItem* const item : items)
            QMetaObject::invokeMethod(item, "clicked");
    };
}

Touch both(Touch first, Touch second) {
    return [first = std::move(first), second = std::move(second)](QQuickItem& root) {
        first(root);
        second(root);
    };
}

enum class Moment { before, waiting, survivors, gone };

/// A server with two workers, reviewed.
StopPlan reviewed(VarnetStore& store) {
    const Service* const service = serverNamed(store, "Django");
    auto plan = StopPlanner::make(*service, store.snapshot(), PreparedMachine::user, -1);
    StopPlan shown = plan ? *plan : StopPlan{};
    const StopTarget root = shown.targets.front();
    for (const char* const worker : {"python3", "celery", "sh"}) {
        StopTarget target = root;
        target.identity.pid += static_cast<std::int32_t>(shown.targets.size()) * 8;
        target.name = worker;
        shown.targets.push_back(target);
    }
    return shown;
}

std::vector<StopResult> outcomes(const std::vector<StopTarget>& targets, std::vector<StopOutcome> outcomes) {
    std::vector<StopResult> results;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const StopOutcome outcome = outcomes[std::min(i, outcomes.size() - 1)];
        results.push_back(
            {targets[i], outcome, outcome == StopOutcome::denied ? "Operation not permitted" : ""});
    }
    return results;
}

Prepare stopSheet(Moment moment) {
    return all({detailOfServer("Django"), [moment](VarnetStore& store) {
                    using enum StopOutcome;
                    StopOperations::Moment shown;
                    shown.stopPlan = reviewed(store);
                    shown.isStopping = moment == Moment::waiting;
                    const auto& targets = shown.stopPlan->targets;
                    if (moment == Moment::survivors)
                        shown.stopResults =
                            outcomes(targets, {stopped, stopped, stillRunning, alreadyStopped});
                    if (moment == Moment::gone)
                        shown.stopResults =
                            outcomes(targets, {stopped, identityChanged, denied, alreadyStopped});
                    store.stopping().show(std::move(shown));
                }});
}

Prepare batchSheet(Moment moment) {
    return all({onPage(Page::sources), [moment](VarnetStore& store) {
                    using enum StopOutcome;
                    std::vector<BatchStopRequest> requests;
                    for (const char* const name : {"Boardroom", "Huddle Chat", "Tempo Music", "storefront"}) {
                        const ApplicationGroup* const group = groupNamed(store, name);
                        if (!group) continue;
                        for (BatchStopRequest& request : store.stopping().batchRequests(*group))
                            requests.push_back(std::move(request));
                    }
                    const auto plan =
                        BatchStopPlanner::make(requests, store.snapshot(), PreparedMachine::user, -1);
                    if (!plan) return;
                    StopOperations::Moment shown;
                    shown.batchStopPlan = *plan;
                    shown.isBatchStopping = moment == Moment::waiting;
                    if (moment == Moment::survivors) {
                        shown.batchStopResults =
                            outcomes(plan->targets(), {stopped, stillRunning, identityChanged, stopped});
                        (*shown.batchStopResults)[1].detail =
                            "Check the app for a save or confirmation dialog.";
                    }
                    if (moment == Moment::gone) shown.batchStopResults = outcomes(plan->targets(), {stopped});
                    store.stopping().show(std::move(shown));
                }});
}

Prepare question(StopForce force) {
    return all({detailOf(Page::apps, "Quill Editor"), [force](VarnetStore& store) {
                    const ApplicationGroup* const group = groupNamed(store, "Quill Editor");
                    store.stopping().show(
                        {.quitRequest = quitQuestion(*group->application, *group->processes.front(), force)});
                }});
}

/// The details of something that has ended since.
void lookAtWhatHasGone(VarnetStore& store) {
    store.setPage(Page::apps);
    store.select("app:/usr/share/applications/gone.desktop", std::nullopt);
}

std::shared_ptr<const MonitorSnapshot> without(bool groups) {
    auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::calm());
    snapshot->services.clear();
    if (!groups) {
        std::erase_if(snapshot->groups,
                      [](const ApplicationGroup& group) { return group.kind == GroupKind::project; });
    }
    return snapshot;
}

} // namespace

std::vector<Picture> listScreens() {
    using namespace PreparedMachine;
    const auto noServers = [] { return without(true); };
    const auto noProjects = [] { return without(false); };
    const Touch threeTicked = ticking({"Boardroom", "Huddle Chat", "Tempo Music"});
    const auto main = [](const char* name, QSize size, auto data, Prepare prepare, Touch touch = {}) {
        return Picture{name, "MainWindow", size, data, std::move(prepare), std::move(touch)};
    };
    return {
        main("sources", window, busy, onPage(Page::sources)),
        main("apps", window, busy, onPage(Page::apps)),
        main("projects", window, busy, onPage(Page::projects)),
        main("servers", window, busy, onPage(Page::servers)),
        main("apps-memory", window, busy, sortedBy(Page::apps, "memory")),
        main("apps-selected", window, busy, detailOf(Page::apps, "Quill Editor"),
             both(threeTicked, unfolding("technicalDetails"))),
        main("apps-selected-small", smallWindow, busy, onPage(Page::apps), threeTicked),
        main("apps-least", leastWindow, busy, onPage(Page::apps)),
        main("servers-least", leastWindow, busy, onPage(Page::servers)),
        main("servers-small", smallWindow, busy, onPage(Page::servers)),
        main("projects-selected", window, busy, onPage(Page::projects), ticking({"api-gateway"})),
        main("projects-agent", window, busy, byAgent("Cursor")),
        main("search", window, busy, searching(Page::sources, "er")),
        main("search-nothing", window, busy, searching(Page::apps, "nothing like it")),
        main("search-no-server", window, busy, searching(Page::servers, "9999")),
        main("apps-gathering", window, gathering, onPage(Page::apps)),
        main("projects-empty", window, noProjects, onPage(Page::projects)),
        main("servers-empty", window, noServers, onPage(Page::servers)),
        main("servers-empty-least", leastWindow, noServers, onPage(Page::servers)),
        main("apps-error", window, failing, onPage(Page::apps)),
        main("detail-app-small", smallWindow, busy, detailOf(Page::apps, "Quill Editor"),
             unfolding("technicalDetails")),
        main("detail-project", window, busy, detailOf(Page::projects, "storefront")),
        main("detail-server", window, busy, detailOfServer("Django")),
        main("detail-server-unknown", window, busy, detailOfServer("node server"),
             unfolding("technicalDetails")),
        main("detail-server-least", leastWindow, busy, detailOfServer("Django")),
        main("detail-system", window, busy, detailOf(Page::apps, "display-server"),
             unfolding("technicalDetails")),
        main("detail-process", window, busy, detailOf(Page::apps, "file-indexer")),
        main("detail-gone", window, busy, lookAtWhatHasGone),
        main("stop-before", window, busy, stopSheet(Moment::before)),
        main("stop-waiting", window, busy, stopSheet(Moment::waiting)),
        main("stop-survivors", window, busy, stopSheet(Moment::survivors)),
        main("stop-gone", window, busy, stopSheet(Moment::gone)),
        main("stop-before-least", leastWindow, busy, stopSheet(Moment::before)),
        main("batch-before", window, busy, batchSheet(Moment::before)),
        main("batch-waiting", window, busy, batchSheet(Moment::waiting)),
        main("batch-survivors", window, busy, batchSheet(Moment::survivors)),
        main("batch-gone", window, busy, batchSheet(Moment::gone)),
        main("batch-before-least", leastWindow, busy, batchSheet(Moment::before)),
        main("quit", window, busy, question(StopForce::polite)),
        main("quit-forced", window, busy, question(StopForce::forced)),
        main("quit-least", leastWindow, busy, question(StopForce::polite)),
    };
}

} // namespace varnet
