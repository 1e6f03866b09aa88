#pragma once

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetCore/Battery/BatteryTracker.h"
#include "VarnetCore/Cloud/CloudRecorder.h"
#include "VarnetCore/Hall/FlameArchive.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "tests/VarnetApp/CloudStore/CloudTestService.h"
#include "tests/VarnetApp/CloudStore/FakeKeychain.h"
#include "tests/VarnetApp/Platform/EventLoop.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/InlineQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QSslConfiguration>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

inline QSslConfiguration trusting(const QSslCertificate& root) {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({root});
    return configuration;
}

/// A machine with a battery of so many points, one estimate of its health and one session.
inline std::shared_ptr<MonitorSnapshot> machineWithBattery(Date now, int points,
                                                           const Uuid& segment = Uuid::random()) {
    const Date begin{799'000'000};
    auto charges = std::make_shared<BatteryHistory::Points>();
    for (int number = 0; number < points; ++number)
        charges->push_back({begin + number * 60, 50, BatteryState::onBattery, -9.5, segment});
    auto session = std::make_shared<BatterySession>();
    session->id = segment;
    session->start = begin;
    session->end = begin + 3'600;
    auto dashboard = std::make_shared<BatteryDashboard>();
    dashboard->archive.points = charges;
    dashboard->archive.health =
        std::make_shared<const BatteryHistory::Health>(BatteryHistory::Health{{begin, 91, 214}});
    dashboard->archive.sessions = {session};
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = now;
    snapshot->systemCPU = 10;
    snapshot->battery = dashboard;
    return snapshot;
}

/// An account's store over a real connection to a service of the test's own. Time stands still but for what a
/// test advances; the network has its own.
class CloudTest : public testing::Test {
protected:
    using Fault = CloudTestService::Fault;
    using Json = nlohmann::json;

    CloudTest() { begin(); }

    /// A new run of the program over what the last one left. The old one ends as if killed: nothing that it
    /// waits for reaches it.
    void begin() {
        store.reset();
        client = std::make_unique<CloudService>(CloudService::Setup{.endpoint = service.endpoint(),
                                                                    .clock = clock,
                                                                    .version = "1.2.3",
                                                                    .systemVersion = "Test 1",
                                                                    .ssl = &ssl,
                                                                    .timeout = 1500});
        store = std::make_unique<CloudStore>(
            CloudStore::Setup{.clock = clock,
                              .mainQueue = queue,
                              .recorderQueue = recorderQueue,
                              .service = *client,
                              .keychain = keychain,
                              .keyFile = folder.path() / "cloud" / "installation.json",
                              .recorder = std::make_shared<CloudRecorder>(outboxFile(), clock),
                              .restoreCollection = [this](FlameArchive archive) {
                                  restored.push_back(std::move(archive));
                                  return restoreFailure;
                              }});
    }
    std::filesystem::path outboxFile() const { return folder.path() / "cloud" / "outbox.sqlite"; }

    bool eventually(const std::function<bool()>& holds) {
        return varnet::eventually([&] {
            queue.run();
            return holds();
        });
    }
    /// What is under way comes to its end.
    void settle() {
        ASSERT_TRUE(eventually([&] { return !store->busy(); }));
    }
    void cycle() {
        store->sync();
        settle();
    }
    /// Lets the network have its say for a while in which nothing is expected.
    void linger() {
        const QDeadlineTimer deadline(60);
        eventually([&] { return deadline.hasExpired(); });
    }

    void signIn() {
        service.authorize();
        store->signIn([this](const QUrl& url) {
            opened.push_back(url);
            return true;
        });
        ASSERT_TRUE(eventually([&] { return !opened.empty() || !store->signingIn(); }));
        queue.advance(CloudStore::pollInterval);
        ASSERT_TRUE(eventually([&] { return !store->signingIn(); }));
        ASSERT_TRUE(store->signedIn()) << store->message().toStdString();
        opened.clear();
    }
    void backUp(const char* mode = "private") {
        store->setMode(mode);
        settle();
        ASSERT_EQ(store->mode(), mode) << store->message().toStdString();
    }
    void capture() {
        store->observe(machine(), collection);
        queue.run();
    }

    std::shared_ptr<const MonitorSnapshot> machine() const {
        return machineWithBattery(clock.now(), batteryPoints, segment);
    }
    static FlameArchive someCollection() {
        FlameArchive archive = FlameArchive::beginning({790'000'000});
        archive.timezone = "Europe/Prague";
        archive.metrics["seconds"] = 4711;
        archive.unlocked["first-light"] = {790'000'060};
        archive.tools = {"Codex"};
        for (int day = 0; day < 10; ++day)
            archive.days.push_back({.date = archive.calendar().startOfDay({790'000'000.0 + day * 86'400}),
                                    .seconds = 60.0 + day});
        return archive;
    }
    std::optional<CloudCredentials> kept() const {
        return keychain.stored ? CloudCredentials::parse(*keychain.stored) : std::nullopt;
    }
    void change(const std::function<void(CloudCredentials&)>& how) {
        CloudCredentials credentials = kept().value();
        how(credentials);
        keychain.stored = credentials.json();
    }
    /// Every record that the service has came in one revision an item, and what came twice counts once.
    std::size_t items() const { return service.records().size(); }

    QCoreApplication& app = application();
    TemporaryFolder folder;
    FakeClock clock;
    HandQueue queue{clock};
    InlineQueue recorderQueue;
    FakeKeychain keychain;
    CloudTestService service{clock};
    QSslConfiguration ssl = trusting(service.authority().certificate);
    std::vector<FlameArchive> restored;
    std::optional<std::string> restoreFailure;
    std::vector<QUrl> opened;
    FlameArchive collection = someCollection();
    int batteryPoints = 250;
    const Uuid segment = Uuid::random();
    std::unique_ptr<CloudService> client;
    std::unique_ptr<CloudStore> store; ///< last: it ends first
};

} // namespace varnet
