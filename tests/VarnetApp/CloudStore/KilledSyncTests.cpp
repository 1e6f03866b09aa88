#include "VarnetCore/Base/SmallFile.h"
#include "tests/VarnetApp/CloudStore/CloudFixture.h"
#include "tests/fakes/ChildProcess.h"

#include <gmock/gmock.h>

#include <random>

namespace varnet {
namespace {

/// A program in the middle of its sync, ended without warning at a point that the service chooses.
class KilledSync : public testing::Test {
protected:
    /// A collection, a day, the points, an estimate and a session: three batches, after the intent and the
    /// status.
    static constexpr std::size_t items = 254;
    static constexpr int requests = 5;

    struct Round {
        QCoreApplication& app = application();
        TemporaryFolder folder;
        SystemClock clock;
        CloudTestService service{clock};

        Round() {
            service.admit("token");
            folder.write("authority.pem", service.authority().certificate.toPem().toStdString());
            const CloudCredentials credentials{"token",        "device-1", "account-1", "e",
                                               "generation-1", "off",      "private",   {}};
            folder.write("keychain.json", credentials.json());
            FlameArchive collection = FlameArchive::beginning(clock.now());
            collection.days.push_back({.date = collection.calendar().startOfDay(clock.now())});
            CloudRecorder recorder(folder.path() / "cloud" / "outbox.sqlite", clock);
            EXPECT_TRUE(
                recorder.capture(*machineWithBattery(clock.now(), 250), collection, credentials.scope()));
        }
        ChildProcess start() {
            return ChildProcess(VARNET_CLOUD_SYNCER,
                                {"varnet_cloud_syncer", service.endpoint().toStdString(),
                                 folder.path("authority.pem"), folder.path().string()},
                                folder.path());
        }
        /// The next run goes to its end.
        void finish() {
            service.waiting = service.done = nullptr;
            std::optional<int> status;
            {
                ChildProcess next = start();
                ASSERT_TRUE(eventually([&] {
                    status = next.ended();
                    return status.has_value();
                }));
            }
            EXPECT_EQ(status, 0);
            EXPECT_EQ(service.records().size(), items) << "each record, in one revision";
            std::size_t again = 0;
            for (const auto& [key, times] : service.arrivals()) {
                EXPECT_LE(times, 2);
                again += times > 1 ? 1 : 0;
            }
            EXPECT_LE(again, 100U) << "at most one batch twice";
            EXPECT_THAT(service.complaints(), testing::IsEmpty());
            const auto kept =
                CloudCredentials::parse(readSmallFile(folder.path("keychain.json"), 10'000).value_or(""));
            ASSERT_TRUE(kept);
            EXPECT_EQ(kept->mode, "private");
            EXPECT_EQ(kept->pendingMode, std::nullopt);
            const SystemClock now;
            CloudRecorder recorder(folder.path() / "cloud" / "outbox.sqlite", now);
            EXPECT_TRUE(recorder.batch(kept->scope())->acknowledgements.empty());
        }
    };
};

TEST_F(KilledSync, betweenAnyTwoStepsTheNextRunFinishes) {
    for (const bool carriedOut : {false, true})
        for (int number = 1; number <= requests; ++number) {
            SCOPED_TRACE(std::string(carriedOut ? "done" : "not yet done") + ", request " +
                         std::to_string(number));
            Round round;
            ChildProcess child = round.start();
            int seen = 0;
            const auto kill = [&] {
                if (++seen == number) child.end(SIGKILL);
            };
            (carriedOut ? round.service.done : round.service.waiting) = kill;
            ASSERT_TRUE(eventually([&] { return seen == number; }));
            round.finish();
        }
}

/// Between an answer and the next request lie the keychain's and the queue's own steps.
TEST_F(KilledSync, anywhereTheNextRunFinishes) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> microseconds(0, 15'000);
    for (int number = 0; number < 15; ++number) {
        SCOPED_TRACE(number);
        Round round;
        ChildProcess child = round.start();
        int seen = 0;
        round.service.done = [&] { ++seen; };
        ASSERT_TRUE(eventually([&] { return seen > number % requests; }));
        const QDeadlineTimer moment(std::chrono::microseconds(microseconds(random)));
        eventually([&] { return moment.hasExpired(); });
        child.end(SIGKILL);
        round.finish();
    }
}

} // namespace
} // namespace varnet
