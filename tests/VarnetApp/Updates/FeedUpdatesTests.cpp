#include "VarnetApp/Updates/AppUpdater.h"
#include "VarnetApp/Updates/RunningCopy.h"
#include "VarnetApp/Updates/linux/ArchiveDownload.h"
#include "VarnetApp/Updates/linux/FeedUpdates.h"
#include "tests/VarnetApp/Updates/LoopbackService.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/fakes/TestAuthority.h"

#include <QFile>
#include <QSettings>
#include <QSslConfiguration>
#include <QSslServer>
#include <QTest>
#include <gtest/gtest.h>

namespace varnet::test {
namespace {

namespace fs = std::filesystem;
using Service = LoopbackService;
using Then = LoopbackService::Answer::Then;

constexpr const char* failed = "Couldn’t finish the update. Try again when you’re ready.";
constexpr const char* ready = "Ready to install. The app will restart automatically.";

/// An updater over a feed that a test answers.
class FeedUpdatesTest : public testing::Test {
protected:
    FeedUpdatesTest() {
        defaults.setValue("SUEnableAutomaticChecks", false);
        service.answers[Service::feed] = {Service::ok(Service::manifest(contents))};
        service.answers[Service::archive] = {Service::ok(contents)};
    }

    /// A start of the program.
    void open() {
        updater.reset();
        updates = std::make_unique<FeedUpdates>(
            FeedUpdates::Setup{.host = site,
                               .build = 1,
                               .systemVersion = "6.1.0",
                               .needs = {.clock = clock,
                                         .mainQueue = queue,
                                         .defaults = &defaults,
                                         .folder = place,
                                         .reveal = [this](const std::string& path) {
                                             revealed.push_back(path);
                                             return canReveal;
                                         }}});
        updater = std::make_unique<AppUpdater>(AppUpdater::Setup{
            .version = "1.3.0", .defaults = &defaults, .mainQueue = &queue, .framework = updates.get()});
        updater->installationIsSafe = [this] { return !cleaning; };
        updater->start();
    }

    void settle() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !updater->sessionInProgress(); }, 5000));
    }

    void check() {
        updater->checkForUpdates();
        settle();
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(place, error))
            names.push_back(entry.path().filename());
        return names;
    }

    const QByteArray contents = QByteArray("archive ").repeated(40'000);
    TemporaryFolder folder;
    fs::path place = folder.path() / "data" / "updates";
    FakeClock clock;
    HandQueue queue{clock};
    QSettings defaults{QString::fromStdString(folder.path("settings.ini")), QSettings::IniFormat};
    Service service;
    ReleaseHost site = service.reached();
    bool cleaning = false;
    bool canReveal = true;
    std::vector<std::string> revealed;
    std::unique_ptr<FeedUpdates> updates;
    std::unique_ptr<AppUpdater> updater;
};

TEST_F(FeedUpdatesTest, fetchesWhatWasFoundOnlyWhenAskedAndOnlyOnce) {
    open();
    EXPECT_TRUE(service.asked.empty()) << "not by itself: that is switched off";
    check();
    EXPECT_EQ(updater->message(), "Version 9.9 is ready to install.");
    EXPECT_EQ(updater->availableVersion(), "9.9");
    EXPECT_EQ(updater->lastChecked(), clock.now());
    check();
    EXPECT_EQ(service.asked, QStringList({Service::feed, Service::feed})) << "another look fetches nothing";
    folder.write("data/updates/Varnet-9.8-900.zip.tmp", "cut off by a crash");
    updater->openUpdate();
    EXPECT_EQ(updater->message(), "Downloading version 9.9");
    EXPECT_FALSE(updater->canCheckForUpdates());
    updater->openUpdate();
    settle();
    EXPECT_EQ(updater->message(), ready);
    EXPECT_EQ(files(), std::vector<std::string>{"Varnet-9.9-1000.zip"});
    const fs::path archive = place / "Varnet-9.9-1000.zip";
    EXPECT_EQ(revealed, std::vector<std::string>{archive.string()});
    EXPECT_EQ(fs::status(place).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(archive).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    QFile file(QString::fromStdString(archive.string()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), contents);
    updater->openUpdate();
    settle();
    EXPECT_EQ(revealed.size(), 2U) << "it is shown again";
    EXPECT_EQ(service.asked.count(Service::archive), 1) << "and not fetched again";
}

TEST_F(FeedUpdatesTest, anArchiveThatIsNotWhatWasAnnouncedLeavesNothing) {
    struct Row {
        const char* name;
        Service::Answer answer;
    };
    const Row rows[] = {
        {"other bytes", {Service::ok(QByteArray(contents).replace(0, 1, "A"))}},
        {"a byte too few", {Service::ok(contents.chopped(1))}},
        {"cut off", {Service::ok(contents.left(100'000), contents.size())}},
        {"whole, but more was promised", {Service::ok(contents, contents.size() + 1)}},
        {"more than fits", {Service::ok(contents, ArchiveDownload::mostBytes + 1), Then::stay}},
        {"an error with the right bytes", {Service::answer("500 Oops", contents)}},
        {"elsewhere", {Service::redirect("/elsewhere")}},
        {"silence", {{}, Then::stay}},
        {"silence in the middle", {Service::ok(contents.left(100'000), contents.size()), Then::stay}},
    };
    open();
    check();
    service.answers["/elsewhere"] = {Service::ok(contents)};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        service.answers[Service::archive] = row.answer;
        updater->openUpdate();
        settle();
        EXPECT_EQ(updater->message(), failed);
        EXPECT_EQ(updater->availableVersion(), "9.9") << "it can be tried again";
        EXPECT_EQ(files(), std::vector<std::string>{});
    }
    EXPECT_TRUE(revealed.empty());
    EXPECT_FALSE(service.asked.contains("/elsewhere"));
}

TEST_F(FeedUpdatesTest, troubleOnThisMachineIsAnEndToo) {
    open();
    check();
    folder.write("data/updates", "a file where the folder should be");
    updater->openUpdate();
    settle();
    EXPECT_EQ(updater->message(), failed);
    fs::remove(place);
    canReveal = false;
    updater->openUpdate();
    settle();
    EXPECT_EQ(updater->message(), failed) << "what nobody could be shown is not ready";
}

TEST_F(FeedUpdatesTest, leavingInTheMiddleLeavesNothing) {
    open();
    check();
    service.answers[Service::archive] = {Service::ok(contents.left(100'000), contents.size()), Then::stay};
    updater->openUpdate();
    ASSERT_TRUE(QTest::qWaitFor([this] { return service.asked.contains(Service::archive); }));
    QTest::qWait(50);
    ASSERT_TRUE(updater->sessionInProgress());
    updater.reset();
    updates.reset();
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(FeedUpdatesTest, aFeedThatFailsSaysSoAndKeepsWhatWasFound) {
    open();
    service.answers[Service::feed] = {Service::ok("garbage")};
    check();
    EXPECT_EQ(updater->message(), failed);
    EXPECT_EQ(updater->availableVersion(), std::nullopt);
    service.answers[Service::feed] = {Service::ok(Service::manifest(contents))};
    check();
    service.answers[Service::feed] = {Service::redirect("/elsewhere")};
    check();
    EXPECT_EQ(updater->message(), failed);
    EXPECT_EQ(updater->availableVersion(), "9.9");
    service.answers[Service::feed] = {Service::ok(Service::manifest(contents, "99.0"))};
    check();
    EXPECT_EQ(updater->message(), "You’re up to date. Version 1.3.0");
    EXPECT_EQ(updater->availableVersion(), std::nullopt);
    updater->openUpdate();
    EXPECT_FALSE(updater->sessionInProgress()) << "there is nothing to fetch any more";
}

TEST_F(FeedUpdatesTest, onlyAServerThatCanProveItsNameIsTheSite) {
    const TestAuthority authority = TestAuthority::make();
    const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
    QSslConfiguration own = usual;
    own.setLocalCertificate(authority.certificate);
    own.setPrivateKey(authority.key);
    QSslServer server;
    server.setSslConfiguration(own);
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    int asked = 0;
    QObject::connect(&server, &QTcpServer::pendingConnectionAvailable, [&] {
        QTcpSocket* const socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [&asked, this, socket] {
            if (!socket->readAll().contains("\r\n\r\n")) return;
            ++asked;
            socket->write(Service::ok(Service::manifest(contents)));
            socket->disconnectFromHost();
        });
    });
    const struct {
        const char* name;
        const char* host;
        bool trusted;
        bool found;
    } rows[]{
        {"nobody vouches for it", "127.0.0.1", false, false},
        {"a certificate of another name", "localhost", true, false},
        {"its own name", "127.0.0.1", true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        asked = 0;
        QSslConfiguration trust = usual;
        if (row.trusted) trust.setCaCertificates({authority.certificate});
        QSslConfiguration::setDefaultConfiguration(trust);
        site.reroute = QUrl(QString("https://%1:%2").arg(row.host).arg(server.serverPort()));
        open();
        check();
        EXPECT_EQ(updater->availableVersion().has_value(), row.found);
        EXPECT_EQ(updater->message(), row.found ? "Version 9.9 is ready to install." : failed);
        EXPECT_EQ(asked, row.found ? 1 : 0);
    }
    QSslConfiguration::setDefaultConfiguration(usual);
}

TEST_F(FeedUpdatesTest, aCleanupIsWaitedFor) {
    open();
    check();
    cleaning = true;
    updater->openUpdate();
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return !files().empty() && updater->message().startsWith("Finishing"); }));
    queue.advance(30);
    EXPECT_TRUE(revealed.empty());
    EXPECT_TRUE(updater->sessionInProgress()) << "nothing else begins meanwhile";
    cleaning = false;
    queue.advance(2);
    EXPECT_EQ(revealed.size(), 1U);
    EXPECT_EQ(updater->message(), ready);
}

TEST_F(FeedUpdatesTest, looksOnceADayWhenItMay) {
    struct Row {
        const char* name;
        std::optional<double> lastAgo; ///< seconds
        QVariant stored;
        bool automatic;
        bool atStart;
    };
    const Row rows[] = {
        {"never before", {}, {}, true, true},
        {"a day ago", 86'400, {}, true, true},
        {"just short of a day", 86'399, {}, true, false},
        {"the clock was set back", -60, {}, true, true},
        {"a date that is none", {}, "nan", true, true},
        {"switched off", {}, {}, false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        defaults.setValue("SUEnableAutomaticChecks", row.automatic);
        defaults.setValue("SULastCheckTime", row.lastAgo ? (clock.now() - *row.lastAgo).seconds : row.stored);
        if (!row.lastAgo && row.stored.isNull()) defaults.remove("SULastCheckTime");
        service.asked.clear();
        open();
        EXPECT_EQ(updater->sessionInProgress(), row.atStart);
        settle();
        EXPECT_EQ(service.asked.size(), row.atStart ? 1 : 0);
        if (!row.automatic) continue;
        const double untilNext = row.atStart ? 86'400 : 3'600;
        queue.advance(untilNext - 1);
        EXPECT_FALSE(updater->sessionInProgress());
        queue.advance(1);
        EXPECT_TRUE(updater->sessionInProgress());
        settle();
    }
}

TEST_F(FeedUpdatesTest, aCopyWithoutAHostHasNoFramework) {
    const UpdateNeeds needs{.clock = clock, .mainQueue = queue, .folder = place};
    EXPECT_EQ(makeUpdateFramework({}, needs), nullptr);
    EXPECT_NE(makeUpdateFramework({.releaseHost = Service::host}, needs), nullptr);
}

} // namespace
} // namespace varnet::test
