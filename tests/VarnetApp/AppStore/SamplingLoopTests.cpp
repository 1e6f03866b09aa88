#include "tests/VarnetApp/AppStore/StoreOnFakes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace varnet {
namespace {

int countSignals(VarnetStore& store, void (VarnetStore::*signal)(), int& counter) {
    QObject::connect(&store, signal, &store, [&counter] { ++counter; });
    return counter;
}

TEST(SamplingLoop, publishesNothingWhileNothingIsVisibleAndAllOfItAtOnceThen) {
    StoreOnFakes fakes;
    fakes.visible = false;
    int published = 0;
    countSignals(*fakes.store, &VarnetStore::snapshotChanged, published);
    fakes.store->start();
    fakes.queue.advance(12);
    EXPECT_EQ(published, 0);
    EXPECT_TRUE(fakes.store->snapshot().processes.empty());
    ASSERT_EQ(fakes.store->latestSnapshot().processes.size(), 1U);
    fakes.visible = true;
    fakes.store->publishLatest();
    EXPECT_EQ(fakes.store->snapshot().date, fakes.store->latestSnapshot().date);
    EXPECT_EQ(published, 1);
}

TEST(SamplingLoop, aSampleThatIsThereAlreadyIsNotPublishedAgain) {
    StoreOnFakes fakes;
    std::vector<Date> published;
    QObject::connect(fakes.store.get(), &VarnetStore::snapshotChanged, fakes.store.get(),
                     [&] { published.push_back(fakes.store->snapshot().date); });
    fakes.store->start();
    // A turn a second, but the engine does not measure in each.
    fakes.queue.advance(10);
    EXPECT_LT(published.size(), 9U);
    EXPECT_EQ(std::ranges::adjacent_find(published), published.end());
}

TEST(SamplingLoop, startsOnceAndNeverWithPreparedData) {
    StoreOnFakes fakes;
    fakes.store->start();
    const std::size_t waiting = fakes.queue.waiting();
    fakes.store->start();
    EXPECT_EQ(fakes.queue.waiting(), waiting);
    fakes.preview = std::make_shared<const MonitorSnapshot>();
    fakes.open();
    fakes.store->start();
    EXPECT_EQ(fakes.queue.waiting(), waiting);
}

TEST(SamplingLoop, endsWithTheStore) {
    StoreOnFakes fakes;
    fakes.store->start();
    fakes.queue.advance(3.5);
    fakes.store.reset();
    fakes.queue.advance(5);
    EXPECT_EQ(fakes.queue.waiting(), 0U);
}

TEST(SamplingLoop, anErrorClearsTheFigureInTheTray) {
    StoreOnFakes fakes;
    fakes.store->start();
    fakes.queue.advance(1);
    fakes.probes.ticks->user += 50;
    fakes.probes.ticks->idle += 50;
    fakes.queue.advance(1);
    ASSERT_TRUE(fakes.store->menuCPU());
    EXPECT_DOUBLE_EQ(*fakes.store->menuCPU(), 50);
    fakes.probes.tableFails = true;
    fakes.queue.advance(4);
    EXPECT_FALSE(fakes.store->menuCPU());
    EXPECT_TRUE(fakes.store->snapshot().error);
}

TEST(SamplingLoop, tellsOfHeatOnceInHalfAnHourAndRemembersThatAcrossRuns) {
    StoreOnFakes fakes;
    fakes.store->setNotifications(true);
    fakes.thermal = 3;
    fakes.store->start();
    fakes.queue.advance(60);
    EXPECT_EQ(fakes.notifications.keys, std::vector<std::string>{"thermal"});
    fakes.open();
    fakes.store->start();
    fakes.queue.advance(60);
    EXPECT_EQ(fakes.notifications.keys.size(), 1U);
    fakes.queue.advance(1800);
    EXPECT_EQ(fakes.notifications.keys.size(), 2U);
}

TEST(SamplingLoop, aThermalStateBeyondTheScaleCountsAsNominal) {
    StoreOnFakes fakes;
    fakes.thermal = 4;
    fakes.store->start();
    fakes.queue.advance(3);
    EXPECT_EQ(fakes.store->snapshot().thermal, Thermal::nominal);
}

TEST(SamplingLoop, theFlameSpeaksAndItsDecksOutliveTheRun) {
    StoreOnFakes fakes;
    fakes.store->start();
    fakes.queue.advance(5);
    const Roast first = fakes.store->roast();
    EXPECT_NE(first.id, "initial");
    EXPECT_FALSE(first.headline.empty());
    // A second run draws the deck's next line.
    fakes.open();
    fakes.store->start();
    fakes.queue.advance(5);
    EXPECT_EQ(fakes.store->roast().topic, first.topic);
    EXPECT_NE(fakes.store->roast().headline, first.headline);
}

TEST(SamplingLoop, aLineMadeWhileNobodyLooksIsDropped) {
    StoreOnFakes fakes;
    fakes.visible = false;
    fakes.store->start();
    fakes.queue.advance(5);
    EXPECT_EQ(fakes.store->roast(), Roast::start());
}

} // namespace
} // namespace varnet
