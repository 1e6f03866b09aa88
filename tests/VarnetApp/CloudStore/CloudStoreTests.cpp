#include "VarnetCore/Cloud/CloudExport.h"
#include "tests/VarnetApp/CloudStore/CloudFixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace varnet {
namespace {

constexpr const char* unavailable = "Cloud is unavailable. Local monitoring continues.";
/// A collection, ten days, the points, one estimate and one session.
constexpr std::size_t all = 263;

TEST_F(CloudTest, fromSigningInToDisconnecting) {
    store->start();
    linger();
    EXPECT_FALSE(store->signedIn());
    EXPECT_EQ(keychain.place, "com.varnet.app.cloud.v1/account");
    EXPECT_EQ(queue.waiting(), 0U) << "without an account nothing wakes up";

    signIn();
    EXPECT_EQ(store->message(), "Connected. Choose how to back up your history.");
    EXPECT_EQ(store->email(), "someone@example.org");
    EXPECT_EQ(kept(), store->credentials());
    capture();
    EXPECT_FALSE(std::filesystem::exists(outboxFile())) << "connecting queues nothing";

    backUp();
    EXPECT_EQ(store->message(), "Backup enabled. Available local history will be included.");
    EXPECT_EQ(service.requests().back().values.at("consent"), "2026-10-cloud-v1");
    capture();
    queue.advance(CloudStore::loopPeriod);
    settle();
    EXPECT_EQ(service.records().size(), all) << "the loop has sent it by itself";
    EXPECT_EQ(service.count("sync"), 3U) << "in batches of a hundred";
    EXPECT_EQ(store->lastBackup(), clock.now());
    ASSERT_EQ(store->devices().size(), 1U);

    service.forgetRequests();
    capture();
    cycle();
    EXPECT_EQ(service.count("sync"), 0U) << "nothing has changed";
    EXPECT_EQ(service.count("status"), 1U);

    collection.metrics["seconds"] = 4712;
    clock.advance(31);
    capture();
    cycle();
    EXPECT_EQ(service.count("sync"), 1U);
    EXPECT_EQ(service.records().size(), all + 1) << "the collection's next revision, and nothing else";
    EXPECT_EQ(service.newest("collection", "current")["data"]["metrics"]["seconds"], 4712);

    service.pageSize = 100;
    service.forgetRequests();
    store->restoreCollection();
    settle();
    EXPECT_EQ(service.count("restore"), 3U);
    ASSERT_EQ(restored.size(), 1U);
    FlameArchive expected = collection;
    EXPECT_EQ(restored[0], expected);
    EXPECT_EQ(store->message(), "History restored. A local copy of the previous history was kept.");

    store->disconnect();
    settle();
    EXPECT_EQ(store->message(), "Disconnected. Local history and your cloud archive are kept.");
    EXPECT_FALSE(store->signedIn());
    EXPECT_FALSE(keychain.stored);
    EXPECT_FALSE(service.hasToken());
    EXPECT_EQ(service.records().size(), all + 1);
    EXPECT_EQ(
        CloudRecorder(outboxFile(), clock).batch(R"(["account-1","generation-1"])")->acknowledgements.size(),
        0U);
    EXPECT_THAT(service.complaints(), testing::IsEmpty());
    EXPECT_TRUE(std::ranges::all_of(service.arrivals(), [](const auto& one) { return one.second == 1; }));
}

/// Every way in which a request of a cycle can go wrong, at every request of it: the next cycle finishes.
TEST_F(CloudTest, aCycleThatFailsIsFinishedByTheNext) {
    signIn();
    backUp();
    struct Row {
        const char* oddity;
        Fault fault;
        const char* message; ///< a passing failure says nothing
    };
    const std::vector<Row> rows{
        {"no answer ever", Fault::hang, ""},
        {"cut before it is done", Fault::cutBefore, ""},
        {"done, but its answer is cut", Fault::cutAfter, ""},
        {"a page in place of an answer", Fault::garbage, ""},
        {"a proxy's page", Fault::garbageError, ""},
        {"the service's own trouble", Fault::serverError, "The service says no."},
        {"asked to slow down", Fault::tooMany, "The service says no."},
        {"an answer without end", Fault::oversized, ""},
        {"sent elsewhere", Fault::redirect, ""},
    };
    double number = 0;
    for (const char* const operation : {"status", "policy", "sync"})
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(operation) + ": " + row.oddity);
            const bool policy = operation == std::string("policy");
            if (policy) {
                change([](CloudCredentials& credentials) { credentials.pendingMode = "community"; });
                service.fail(operation, {row.fault});
            }
            begin();
            store->start();
            ASSERT_TRUE(eventually([&] { return store->signedIn(); }));
            settle();
            const auto hasFailed = [&] {
                EXPECT_TRUE(service.faultsAreUsedUp());
                EXPECT_EQ(store->message(), row.message);
                EXPECT_EQ(store->nextAttempt() - clock.now(), 30);
                EXPECT_TRUE(store->signedIn());
            };
            if (policy) hasFailed();
            collection.metrics["round"] = ++number;
            clock.advance(31);
            capture();
            if (!policy) {
                settle();
                service.fail(operation, {row.fault});
                cycle();
                hasFailed();
            }
            settle();
            cycle();
            EXPECT_EQ(store->nextAttempt() - clock.now(), 300) << "a good cycle";
            EXPECT_EQ(store->message().isEmpty(), !policy) << "the trouble has passed";
            EXPECT_EQ(service.newest("collection", "current")["data"]["metrics"]["round"], number);
            EXPECT_EQ(items(), all + static_cast<std::size_t>(number) - 1) << "each revision once";
        }
    EXPECT_THAT(service.complaints(), testing::IsEmpty())
        << "also no request was repeated by the network's own";
    EXPECT_TRUE(restored.empty());
}

TEST_F(CloudTest, failuresWaitLongerAndLonger) {
    signIn();
    store->start();
    backUp();
    service.stop();
    queue.advance(CloudStore::loopPeriod);
    settle();
    for (const double wait : {30, 60, 120, 240, 480, 960, 1920, 3600, 3600}) {
        EXPECT_EQ(store->nextAttempt() - clock.now(), wait);
        EXPECT_EQ(store->message(), "Backup enabled. Available local history will be included.");
        const int before = keychain.calls;
        queue.advance(wait - 0.5);
        EXPECT_FALSE(store->busy()) << "not before its time";
        EXPECT_EQ(keychain.calls, before);
        if (wait == 3600 && store->retrySeconds() == 3600 && service.requests().size() > 3) break;
        queue.advance(0.5);
        EXPECT_TRUE(store->busy());
        settle();
    }
    EXPECT_EQ(store->retrySeconds(), 3600);
    service.resume();
    queue.advance(3600);
    settle();
    EXPECT_EQ(store->nextAttempt() - clock.now(), 300);
    EXPECT_EQ(store->retrySeconds(), 30);
    queue.advance(300);
    settle();
    EXPECT_EQ(service.count("status"), 2U);
}

/// The program ends between any two steps of what the user asked for, and a new run finishes it.
TEST_F(CloudTest, intentsOutliveTheProgram) {
    struct Row {
        const char* oddity;
        const char* asked; ///< a mode, or "disconnect"
        enum End { beforeAsking, onTheWay, afterwards } end;
    };
    for (const Row& row :
         std::vector<Row>{{"off: only the intent is kept", "off", Row::beforeAsking},
                          {"off: it never arrives", "off", Row::onTheWay},
                          {"off: nobody hears the answer", "off", Row::afterwards},
                          {"on: only the intent is kept", "community", Row::beforeAsking},
                          {"on: it never arrives", "community", Row::onTheWay},
                          {"on: nobody hears the answer", "community", Row::afterwards},
                          {"disconnecting: only the intent is kept", "disconnect", Row::beforeAsking},
                          {"disconnecting: it never arrives", "disconnect", Row::onTheWay},
                          {"disconnecting: nobody hears the answer", "disconnect", Row::afterwards}}) {
        SCOPED_TRACE(row.oddity);
        keychain.stored.reset();
        service.revokeTokens();
        begin();
        signIn();
        backUp();
        clock.advance(31);
        collection.metrics["round"] += 1;
        capture();
        bool gone = false;
        const auto end = [&] {
            store.reset();
            gone = true;
        };
        if (row.end == Row::onTheWay) service.waiting = end;
        if (row.end == Row::afterwards) service.done = end;
        const bool disconnecting = row.asked == std::string("disconnect");
        if (disconnecting) {
            store->disconnect();
        } else {
            store->setMode(row.asked);
        }
        if (row.end != Row::beforeAsking) {
            ASSERT_TRUE(eventually([&] { return gone; }));
        }
        store.reset();
        service.waiting = service.done = nullptr;
        ASSERT_TRUE(disconnecting ? kept()->pendingDisconnect == true : kept()->pendingMode == row.asked);

        linger(); // the old connection ends
        begin();
        store->start();
        ASSERT_TRUE(eventually([&] { return store->signedIn(); }));
        capture();
        settle();
        if (disconnecting) {
            EXPECT_FALSE(store->signedIn());
            EXPECT_FALSE(keychain.stored);
            EXPECT_FALSE(service.hasToken());
        } else {
            EXPECT_EQ(kept()->mode, row.asked);
            EXPECT_EQ(kept()->pendingMode, std::nullopt);
            EXPECT_EQ(service.mode(), row.asked);
        }
        EXPECT_TRUE(CloudRecorder(outboxFile(), clock)
                        .batch(R"(["account-1","generation-1"])")
                        ->acknowledgements.empty());
        const Json newest = service.newest("collection", "current");
        EXPECT_EQ(newest.is_object() && newest["data"]["metrics"]["round"] == collection.metrics["round"],
                  row.asked == std::string("community"))
            << "what was queued goes out only where backup goes on";
    }
    EXPECT_THAT(service.complaints(), testing::IsEmpty());
}

TEST_F(CloudTest, aSignInThatDoesNotSucceedSaysWhy) {
    constexpr const char* locked = "Couldn’t read your cloud account. Unlock your Mac and try again.";
    constexpr const char* no = "The service says no.";
    struct Row {
        const char* oddity;
        std::function<void()> arrange;
        const char* message;
        bool opens = false;
        bool asks = true;
    };
    const auto page = [this](const char* address) {
        return [this, address] { service.browserPage = address; };
    };
    const auto failing = [this](const char* operation, Fault fault) {
        return [this, operation, fault] { service.fail(operation, {fault}); };
    };
    const auto keepsNothing = [this] {
        keychain.readOnly = true;
        service.authorize();
    };
    const QString own = service.endpoint();
    for (const Row& row : std::vector<Row>{
             {"a page of another host", page("https://127.0.0.2/connect"), unavailable},
             {"a host that begins alike", page("https://127.0.0.1.example.org/"), unavailable},
             {"the own host as a user's name", page("https://127.0.0.1@example.org/"), unavailable},
             {"not encrypted", page("http://127.0.0.1/connect"), unavailable},
             {"no address", page("::"), unavailable},
             {"a program's own scheme", page("file://127.0.0.1/etc/passwd"), unavailable},
             {"the service says no", failing("pair", Fault::serverError), no},
             {"half an answer", failing("pair", Fault::cutAfter), unavailable},
             {"an answer of other things", failing("pair", Fault::brokenReply), unavailable},
             {"nobody in the browser", [] {}, "Sign-in expired. Please try again.", true},
             {"refused in the browser", failing("exchange", Fault::serverError), no, true},
             {"credentials that are none", failing("exchange", Fault::brokenReply), unavailable, true},
             {"a locked keyring", [&] { keychain.locked = true; }, locked, false, false},
             {"a keyring that keeps nothing", keepsNothing, locked, true}}) {
        SCOPED_TRACE(row.oddity);
        row.arrange();
        service.forgetRequests();
        const qsizetype received = service.received().size();
        opened.clear();
        store->signIn([this](const QUrl& url) {
            opened.push_back(url);
            return true;
        });
        EXPECT_TRUE(store->signingIn());
        EXPECT_TRUE(eventually([&] {
            if (queue.waiting() > 0) queue.advance(1); // the next question, or the recorder's answer
            return !store->signingIn();
        }));
        EXPECT_EQ(store->message(), row.message);
        EXPECT_EQ(opened.size(), row.opens ? 1U : 0U);
        for (const QUrl& url : opened)
            EXPECT_EQ(url.toString(), own + "/connect");
        EXPECT_EQ(service.received().size() > received, row.asks);
        EXPECT_FALSE(store->signedIn());
        EXPECT_FALSE(keychain.stored);
        service.browserPage.clear();
        keychain.locked = keychain.readOnly = false;
    }
    EXPECT_THAT(service.complaints(), testing::IsEmpty());
}

TEST_F(CloudTest, theVerifierStaysHereUntilTheBrowserIsDone) {
    const auto open = [](const QUrl&) { return true; };
    store->signIn(open);
    const QString waiting = "Finish sign-in in your browser. Connecting does not upload history.";
    ASSERT_TRUE(eventually([&] { return store->message() == waiting; }));
    const Json pair = service.requests().back().values;
    EXPECT_FALSE(pair.contains("verifier"));
    EXPECT_EQ(service.count("exchange"), 0U);
    service.fail("exchange", {Fault::none, Fault::cutBefore, Fault::garbageError, Fault::cutAfter});
    for (int poll = 0; poll < 4; ++poll) {
        if (poll == 3) service.authorize();
        queue.advance(2);
        ASSERT_TRUE(eventually([&] { return queue.waiting() > 0; })) << "another poll, however this one went";
        EXPECT_EQ(store->message(), waiting) << "a network that fails in passing ends nothing";
    }
    queue.advance(2);
    ASSERT_TRUE(eventually([&] { return store->signedIn(); }));
    EXPECT_EQ(service.count("exchange"), 3U);
    const std::string verifier = service.requests().back().values.at("verifier");
    EXPECT_EQ(verifier.size(), 44U);
    EXPECT_EQ(pair.dump().find(verifier), std::string::npos);

    store->disconnect();
    settle();
    store->signIn(open);
    ASSERT_TRUE(eventually([&] { return store->message() == waiting; }));
    store->cancelSignIn();
    EXPECT_FALSE(store->signingIn());
    EXPECT_EQ(store->message(), "");
    service.forgetRequests();
    queue.advance(10);
    linger();
    EXPECT_TRUE(service.requests().empty()) << "nobody asks for what was given up";
    EXPECT_FALSE(store->signedIn());
}

TEST_F(CloudTest, aRejectedTokenAsksForASignInAndKeepsTheQueue) {
    signIn();
    backUp();
    capture();
    service.fail("sync", {Fault::none, Fault::expiredToken});
    cycle();
    EXPECT_FALSE(store->signedIn());
    EXPECT_FALSE(keychain.stored);
    EXPECT_EQ(store->message(), "The service says no.") << "in the service's words";
    EXPECT_EQ(items(), 100U);
    signIn();
    EXPECT_EQ(store->mode(), "private");
    cycle();
    EXPECT_EQ(items(), all) << "it goes on where it was";
    EXPECT_TRUE(std::ranges::all_of(service.arrivals(), [](const auto& one) { return one.second == 1; }));

    const std::vector<std::function<void()>> acts{[&] { store->restoreCollection(); },
                                                  [&] { store->setMode("off"); }};
    for (const auto& act : acts) {
        service.revokeTokens();
        act();
        settle();
        EXPECT_FALSE(store->signedIn());
        EXPECT_EQ(store->message(), "Please sign in again.");
        signIn();
    }
}

TEST_F(CloudTest, anArchiveThatEndsTakesItsQueueAlong) {
    const auto dirty = [&](const std::string& scope) {
        return CloudRecorder(outboxFile(), clock).batch(scope)->acknowledgements.size();
    };
    const QString deleted = "This cloud archive was deleted. Enable backup again to start a new archive.";
    signIn();
    for (const char* const how : {"the status says off", "status", "sync"}) {
        SCOPED_TRACE(how);
        backUp();
        clock.advance(31);
        collection.metrics["round"] += 1;
        capture();
        EXPECT_GT(dirty(store->credentials()->scope()), 0U);
        const std::string scope = store->credentials()->scope();
        if (how == std::string("the status says off")) {
            service.deleteArchive();
        } else {
            service.fail(how, {Fault::deletedArchive});
        }
        cycle();
        EXPECT_EQ(store->message(), deleted);
        EXPECT_EQ(store->mode(), "off");
        EXPECT_EQ(kept()->mode, "off");
        EXPECT_EQ(dirty(scope), 0U);
        cycle();
        EXPECT_EQ(store->message(), deleted) << "said once, and kept";
        EXPECT_EQ(items(), 0U);
    }
    backUp();
    EXPECT_EQ(store->credentials()->generation, "generation-4");
    capture();
    cycle();
    EXPECT_EQ(items(), all) << "a new archive begins with all there is";

    service.renewArchive(); // by another machine
    collection.metrics["round"] += 1;
    clock.advance(31);
    capture();
    cycle();
    EXPECT_EQ(kept()->generation, "generation-5");
    EXPECT_EQ(dirty(R"(["account-1","generation-4"])"), 0U);
    const std::size_t before = items();
    clock.advance(31);
    capture();
    cycle();
    EXPECT_EQ(items() - before, all);
    EXPECT_THAT(service.complaints(), testing::IsEmpty());
}

TEST_F(CloudTest, theUsersWishDoesNotWaitForAThousandBatches) {
    batteryPoints = 2000;
    signIn();
    backUp();
    capture();
    service.fail("sync", {});
    store->sync();
    ASSERT_TRUE(eventually([&] { return service.count("sync") == 2; }));
    EXPECT_TRUE(store->busy());
    store->setMode("off");
    ASSERT_TRUE(eventually([&] { return store->mode() == "off" && !store->busy(); }));
    EXPECT_LT(items(), 500U);
    EXPECT_EQ(store->message(), "Backup is off. Your cloud archive is kept.");
    const std::size_t before = items();
    clock.advance(31);
    capture();
    cycle();
    EXPECT_EQ(items(), before) << "off is off";
    EXPECT_EQ(CloudRecorder(outboxFile(), clock).batch(store->credentials()->scope())->data, "[]");
}

TEST_F(CloudTest, aRestoreThatFailsTouchesNothing) {
    signIn();
    backUp();
    store->restoreCollection();
    settle();
    EXPECT_EQ(store->message(), "No collection backup is available for this installation.");
    capture();
    cycle();
    service.pageSize = 100;
    for (const Fault fault : {Fault::cutBefore, Fault::cutAfter, Fault::hang, Fault::garbage,
                              Fault::brokenReply, Fault::oversized, Fault::tooMany}) {
        SCOPED_TRACE(static_cast<int>(fault));
        service.fail("restore", {Fault::none, Fault::none, fault});
        store->restoreCollection();
        settle();
        EXPECT_EQ(store->message(), fault == Fault::tooMany ? "The service says no." : unavailable);
        EXPECT_TRUE(restored.empty());
    }
    restoreFailure = "the disk is full";
    store->restoreCollection();
    settle();
    EXPECT_EQ(store->message(),
              "Couldn’t save your collection. Check available disk space and folder access.");
    EXPECT_THAT(service.complaints(), testing::IsEmpty());
}

TEST_F(CloudTest, aKeyringOrADiskThatFailsLosesNothing) {
    constexpr const char* locked = "Couldn’t read your cloud account. Unlock your Mac and try again.";
    signIn();
    backUp();
    const std::string before = *keychain.stored;
    keychain.readOnly = true;
    store->setMode("off");
    settle();
    EXPECT_EQ(store->message(), locked);
    EXPECT_EQ(service.mode(), "private") << "what cannot be kept is not asked for";
    store->disconnect();
    settle();
    EXPECT_TRUE(service.hasToken());
    EXPECT_EQ(keychain.stored, before);
    keychain.readOnly = false;
    keychain.locked = true;
    begin();
    store->start();
    ASSERT_TRUE(eventually([&] { return store->message() == locked; }));
    EXPECT_FALSE(store->signedIn());
    keychain.locked = false;
    begin();
    store->start();
    ASSERT_TRUE(eventually([&] { return store->signedIn() && !store->busy(); }));

    std::filesystem::remove_all(folder.path() / "cloud");
    folder.write("cloud", "a file where the folder should be");
    begin();
    store->start();
    ASSERT_TRUE(eventually([&] { return store->signedIn(); }));
    settle();
    capture();
    EXPECT_EQ(store->message(), "Cloud history could not be queued. Check available disk space.");
    EXPECT_EQ(store->retrySeconds(), 60) << "without its key it asks for nothing, and tries again";
    std::filesystem::remove(folder.path() / "cloud");
    capture();
    EXPECT_EQ(store->message(), "");
}

TEST_F(CloudTest, aBuildWithoutAServiceTriesNothing) {
    keychain.stored = CloudCredentials{"t", "d", "a", "e", "g", "private", {}, {}}.json();
    for (const char* const endpoint : {"", "http://127.0.0.1:1", "127.0.0.1"}) {
        CloudService none({.endpoint = endpoint, .clock = clock, .version = "1", .systemVersion = "1"});
        CloudStore idle({.clock = clock,
                         .mainQueue = queue,
                         .recorderQueue = recorderQueue,
                         .service = none,
                         .keychain = keychain,
                         .keyFile = folder.path() / "key",
                         .recorder = std::make_shared<CloudRecorder>(outboxFile(), clock)});
        EXPECT_FALSE(idle.configured());
        idle.start();
        idle.signIn([](const QUrl&) { return true; });
        idle.sync();
        idle.restoreCollection();
        bool accepted = true;
        idle.sendFeedback({"bug", "t", "b", {}}, &idle, [&](bool was) { accepted = was; });
        linger();
        EXPECT_FALSE(accepted);
        EXPECT_FALSE(idle.signingIn());
        EXPECT_EQ(idle.message(), "");
        EXPECT_TRUE(none.accountPage().isEmpty() || !none.isConfigured());
    }
    EXPECT_EQ(keychain.calls, 0);
    EXPECT_EQ(queue.waiting(), 0U);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(CloudTest, feedbackGoesUnsigned) {
    std::optional<bool> accepted;
    const auto send = [&](const Feedback& feedback) {
        accepted.reset();
        store->sendFeedback(feedback, store.get(), [&](bool was) { accepted = was; });
        return eventually([&] { return accepted.has_value(); }) && *accepted;
    };
    EXPECT_TRUE(send({"idea", "More flames", "Please.\n\"quoted\" \xff", "me@example.org"}));
    EXPECT_EQ(service.feedback, Json({{"kind", "idea"},
                                      {"title", "More flames"},
                                      {"body", "Please.\n\"quoted\" \xef\xbf\xbd"},
                                      {"email", "me@example.org"},
                                      {"platform", "macos"},
                                      {"appVersion", "1.2.3"},
                                      {"osVersion", "Test 1"}}));
    EXPECT_TRUE(send({"idea", "t", "b", {}}));
    EXPECT_FALSE(service.feedback.contains("email"));
    service.fail("feedback", {Fault::serverError, Fault::cutBefore});
    EXPECT_FALSE(send({"idea", "t", "b", {}}));
    EXPECT_FALSE(send({"idea", "t", "b", {}}));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "cloud")) << "no identity is made for it";
}

TEST_F(CloudTest, aDaysEstimateOfTheBatteryIsOneRecord) {
    signIn();
    backUp();
    capture();
    cycle();
    const std::size_t before = items();
    for (int second = 0; second < 300; second += 60) {
        clock.advance(60);
        auto later = std::make_shared<MonitorSnapshot>(*machine());
        auto dashboard = std::make_shared<BatteryDashboard>(*later->battery);
        dashboard->archive.health = std::make_shared<const BatteryHistory::Health>(
            BatteryHistory::Health{{Date{799'000'000}, 91, 214}, {clock.now(), 90, 215}});
        later->battery = dashboard;
        store->observe(later, collection);
        queue.run();
        cycle();
    }
    EXPECT_EQ(items(), before + 1) << "its date moves on with every reading";
}

TEST_F(CloudTest, nobodyElseIsTheService) {
    signIn();
    const TestAuthority other = TestAuthority::make();
    ssl = trusting(other.certificate);
    begin();
    service.forgetRequests();
    store->start();
    ASSERT_TRUE(eventually([&] { return store->signedIn(); }));
    settle();
    EXPECT_TRUE(service.requests().empty()) << "a certificate of an authority that nobody trusts";
    EXPECT_EQ(store->retrySeconds(), 60);
}

TEST(CloudRestoreMerge, keepsWhatTheExportLacks) {
    FlameArchive local = FlameArchive::beginning({790'000'000});
    local.timezone = "Europe/Prague";
    local.metrics = {{"seconds", 5}, {"mine", 1}};
    local.unlocked = {{"mine", {1}}, {"both", {2}}};
    local.creditedStops = {"1:2:3"};
    const Date first = local.calendar().startOfDay({790'000'000});
    const Date second = local.calendar().startOfDay({790'100'000});
    local.days = {{.date = first, .seconds = 1, .topApp = FlameRecord{"app", "Mine", 3, first}},
                  {.date = second, .seconds = 2}};
    FlameArchive restored = FlameArchive::beginning({780'000'000});
    restored.timezone = local.timezone;
    restored.metrics = {{"seconds", 9}};
    restored.unlocked = {{"both", {3}}};
    restored.days = {{.date = first, .seconds = 10}};
    const FlameArchive merged = CloudExport::merged(restored, local);
    EXPECT_EQ(merged.metrics, (std::map<std::string, double>{{"seconds", 9}, {"mine", 1}}));
    EXPECT_EQ(merged.unlocked, (std::map<std::string, Date>{{"both", {3}}, {"mine", {1}}}));
    EXPECT_EQ(merged.creditedStops, local.creditedStops);
    ASSERT_EQ(merged.days.size(), 2U);
    EXPECT_EQ(merged.days[0].seconds, 10);
    EXPECT_EQ(merged.days[0].topApp, local.days[0].topApp);
    EXPECT_EQ(merged.days[1], local.days[1]);
    restored.timezone = "Asia/Tokyo";
    EXPECT_EQ(CloudExport::merged(restored, local).days, restored.days) << "days of two zones do not mix";
}

} // namespace
} // namespace varnet
