#pragma once

#include "VarnetApp/AppStore/VarnetStore.h"

namespace varnet {

class FlameCollectionStore;

/// The collaborators, with a collection that takes part in what the store does.
/// @param collection outlives the store
StoreCollaborators withCollection(FlameCollectionStore& collection, StoreCollaborators collaborators);

} // namespace varnet
