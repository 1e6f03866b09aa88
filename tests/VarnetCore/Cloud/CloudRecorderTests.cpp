#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Cloud/CloudRecorder.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <future>
#include <map>
#include <thread>

namespace varnet {
namespace {

using nlohmann::json;

CloudItem item(int producer, int id, int value) {
    return CloudItem::make("session", std::to_string(producer) + ":" + std::to_string(id), 1,
                           {{"value", value}})
        .value();
}

/// What a service has after some batches: the last contents of each record.
using Delivered = std::map<std::string, json>;

void deliver(const CloudBatch& batch, Delivered& service) {
    for (const json& record : json::parse(batch.data))
        service[record["id"].get<std::string>()] = record["data"];
}

TEST(CloudOutboxThreads, whatChangesWhileItIsSentIsSentAgain) {
    constexpr int producers = 3;
    constexpr int values = 60;
    const TemporaryFolder folder;
    const SystemClock clock;
    const auto outbox = CloudOutbox::open(folder.path() / "outbox.sqlite", clock).value();
    std::atomic<int> working = producers;
    Delivered service;
    {
        std::vector<std::jthread> threads;
        for (int producer = 0; producer < producers; ++producer)
            threads.emplace_back([&, producer] {
                for (int value = 1; value <= values; ++value) {
                    const std::vector items{item(producer, value % 4, value), item(producer, 9, value)};
                    EXPECT_TRUE(outbox->capture(items, "mine"));
                }
                --working;
            });
        threads.emplace_back([&] { // another account, which leaves all the time
            while (working > 0) {
                EXPECT_TRUE(outbox->capture(std::vector{item(0, 9, -1)}, "other"));
                EXPECT_TRUE(outbox->discard("other"));
            }
        });
        for (bool last = false; !last;) {
            last = working == 0;
            const CloudBatch batch = outbox->batch("mine").value();
            deliver(batch, service);
            EXPECT_TRUE(outbox->acknowledge(batch, "mine"));
        }
    }
    ASSERT_EQ(service.size(), producers * std::size_t{5});
    for (const auto& [id, data] : service) {
        const int number = id.back() - '0';
        EXPECT_EQ(data["value"], number == 9 ? values : values - (values - number) % 4) << id;
    }
    EXPECT_EQ(outbox->batch("mine")->data, "[]");
    EXPECT_EQ(outbox->batch("other")->data, "[]");
}

TEST(CloudRecorderThreads, snapshotsAreReadWhereTheyAreRecorded) {
    constexpr int passes = 60;
    const TemporaryFolder folder;
    const SystemClock clock;
    CloudRecorder recorder(folder.path() / "outbox.sqlite", clock);
    ThreadQueue queue;
    Delivered service;
    std::size_t seen = 0;
    for (int pass = 0; pass < passes; ++pass) {
        auto snapshot = std::make_shared<MonitorSnapshot>();
        snapshot->date = Date{samples::noon.seconds + pass * 5.0};
        snapshot->physicalMemory = 16'000'000'000;
        ProcessSample sample = samples::process(100 + pass);
        snapshot->processes = {samples::shared(std::move(sample))};
        ApplicationGroup& group = snapshot->groups.emplace_back();
        group.id = "app:/opt/ember";
        group.name = "Ember";
        group.kind = GroupKind::application;
        group.processes = snapshot->processes;
        queue.post([&, published = std::shared_ptr<const MonitorSnapshot>(snapshot)] {
            EXPECT_TRUE(recorder.capture(*published, FlameArchive::beginning(published->date), "mine"));
            const CloudBatch batch = recorder.batch("mine").value();
            deliver(batch, service);
            EXPECT_TRUE(recorder.ack(batch, "mine"));
        });
        // Meanwhile the windows read the same snapshot.
        seen += group.processes.size();
    }
    std::promise<void> done;
    queue.post([&] { done.set_value(); });
    done.get_future().wait();
    EXPECT_EQ(seen, static_cast<std::size_t>(passes));
    std::size_t applications = 0;
    for (const auto& [id, data] : service)
        if (data.contains("appID")) ++applications;
    EXPECT_EQ(applications, 1U) << "the day's use of one application is one record";
}

} // namespace
} // namespace varnet
