#include "VarnetApp/Application/CollectionWatch.h"

#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"

namespace varnet {

StoreCollaborators withCollection(FlameCollectionStore& collection, StoreCollaborators collaborators) {
    collaborators.observeCollection = [&collection](const MonitorSnapshot& snapshot) {
        collection.observe(snapshot);
    };
    collaborators.inspected = [&collection](GroupKind kind) { collection.inspect(kind); };
    collaborators.stopped = [&collection](const StopPlan& plan, const std::vector<StopResult>& results,
                                          bool forgotten) { collection.stopped(plan, results, forgotten); };
    collaborators.unlockedBadges = [&collection] { return collection.archive().unlocked.size(); };
    collaborators.resetCollection = [&collection] { collection.reset(); };
    return collaborators;
}

} // namespace varnet
