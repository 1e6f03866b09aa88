// One run of the account's client: varnet_cloud_syncer ENDPOINT CERTIFICATE FOLDER
// Begins as the program does and ends when its first cycle has, well (0) or not (1).

#include "VarnetApp/AppStore/MainQueue.h"
#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Cloud/CloudRecorder.h"
#include "tests/VarnetApp/CloudStore/FakeKeychain.h"

#include <QCoreApplication>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <cstdlib>

int main(int argc, char** argv) {
    using namespace varnet;
    if (argc != 4) return 2;
    const QCoreApplication application(argc, argv);
    QSslConfiguration ssl = QSslConfiguration::defaultConfiguration();
    ssl.setCaCertificates(QSslCertificate::fromPath(argv[2]));
    const std::filesystem::path folder = argv[3];
    const SystemClock clock;
    MainQueue mainQueue;
    ThreadQueue recorderQueue;
    // What is kept outlives the run that is killed.
    const std::filesystem::path keychainFile = folder / "keychain.json";
    FakeKeychain keychain;
    if (const auto text = readSmallFile(keychainFile.string(), 10'000)) keychain.stored = *text;
    keychain.changed = [&] {
        if (keychain.stored) {
            AtomicFile::write(keychainFile, *keychain.stored);
        } else {
            std::filesystem::remove(keychainFile);
        }
    };
    CloudService service({.endpoint = argv[1],
                          .clock = clock,
                          .version = "1",
                          .systemVersion = "1",
                          .ssl = &ssl,
                          .timeout = 5000});
    CloudStore store(
        {.clock = clock,
         .mainQueue = mainQueue,
         .recorderQueue = recorderQueue,
         .service = service,
         .keychain = keychain,
         .keyFile = folder / "cloud" / "installation.json",
         .recorder = std::make_shared<CloudRecorder>(folder / "cloud" / "outbox.sqlite", clock)});
    QTimer ended;
    QObject::connect(&ended, &QTimer::timeout, &ended, [&] {
        if (!store.busy() && store.nextAttempt() > Date::distantPast())
            QCoreApplication::exit(store.retrySeconds() == CloudStore::firstRetry ? 0 : 1);
    });
    ended.start(1);
    QTimer::singleShot(20'000, &ended, [] { QCoreApplication::exit(3); });
    store.start();
    // As abruptly as the runs that are killed: what a run leaves behind must not depend on how it ends.
    std::_Exit(QCoreApplication::exec());
}
