// Saves a collection without end: varnet_collection_saver FILE

#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetCore/Base/Clock.h"
#include "tests/fakes/InlineQueue.h"

int main(int argc, char** argv) {
    using namespace varnet;
    if (argc != 2) return 2;
    const SystemClock clock;
    ThreadQueue writer;
    InlineQueue mainQueue; // nothing is waited for there
    FlameCollectionStore store({.clock = clock, .mainQueue = mainQueue, .writer = writer, .file = argv[1]});
    if (!store.warning().isEmpty()) return 3;
    // Bounded, should nobody end it.
    for (int round = 0; round < 100'000; ++round) {
        store.cleaned(1, 1'000);
        store.save(FlameCollectionStore::Saving::now);
    }
    return 0;
}
