#include "VarnetApp/Platform/linux/SecretServiceKeychain.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QMap>
#include <QTimer>
#include <qt6keychain/keychain.h>

#include <utility>

namespace varnet::platform {

namespace {

constexpr int patience = 5000; ///< milliseconds for a look that asks nobody anything

/// Starts a job that ends by itself. Jobs outlive whoever asked; their answers do not.
template <typename Job>
void run(Job* job, const std::string& account, QObject* receiver, std::function<void(Job&)> done) {
    job->setAutoDelete(true);
    job->setInsecureFallback(false);
    job->setKey(QString::fromStdString(account));
    QObject::connect(job, &QKeychain::Job::finished, receiver,
                     [job, done = std::move(done)](QKeychain::Job*) { done(*job); });
    job->start();
}

/// Without a bus there is no service, and asking for one could start a bus.
bool isReachable() {
    return !sessionBusAddress().isEmpty();
}

} // namespace

void SecretServiceKeychain::read(const std::string& service, const std::string& account, QObject* receiver,
                                 std::function<void(Entry)> then) {
    if (!isReachable()) {
        QTimer::singleShot(0, receiver, [then = std::move(then)] { then({}); });
        return;
    }
    using QKeychain::ReadPasswordJob;
    run<ReadPasswordJob>(new ReadPasswordJob(QString::fromStdString(service)), account, receiver,
                         [this, service, account, receiver, then = std::move(then)](ReadPasswordJob& job) {
                             if (job.error() == QKeychain::EntryNotFound)
                                 return tellMissingFromLocked(service, account, receiver, then);
                             if (job.error() != QKeychain::NoError) return then({});
                             then({Outcome::done, job.binaryData().toStdString()});
                         });
}

/// The user who does not unlock the keyring, and a keyring without the entry, read the same until the service
/// is asked what it has.
void SecretServiceKeychain::tellMissingFromLocked(const std::string& service, const std::string& account,
                                                  QObject* receiver, std::function<void(Entry)> then) {
    if (!bus_) bus_ = BusConnection::open(sessionBusAddress());
    if (!bus_) return then({});
    QDBusMessage look = QDBusMessage::createMethodCall("org.freedesktop.secrets", "/org/freedesktop/secrets",
                                                       "org.freedesktop.Secret.Service", "SearchItems");
    using Attributes = QMap<QString, QString>;
    qDBusRegisterMetaType<Attributes>();
    look << QVariant::fromValue(
        Attributes{{"server", QString::fromStdString(service)}, {"user", QString::fromStdString(account)}});
    bus_->call(look, patience, receiver, [then = std::move(then)](const QDBusMessage& answer) {
        const QVariantList found = answer.arguments();
        const bool searched = answer.type() == QDBusMessage::ReplyMessage && found.size() == 2;
        const bool locked = searched && !qdbus_cast<QList<QDBusObjectPath>>(found[1]).isEmpty();
        then({locked ? Outcome::failed : Outcome::missing});
    });
}

void SecretServiceKeychain::write(const std::string& service, const std::string& account, std::string data,
                                  QObject* receiver, std::function<void(bool)> then) {
    if (!isReachable()) {
        QTimer::singleShot(0, receiver, [then = std::move(then)] { then(false); });
        return;
    }
    using QKeychain::WritePasswordJob;
    auto* const job = new WritePasswordJob(QString::fromStdString(service));
    job->setBinaryData(QByteArray::fromStdString(data));
    run<WritePasswordJob>(job, account, receiver, [then = std::move(then)](WritePasswordJob& finished) {
        then(finished.error() == QKeychain::NoError);
    });
}

void SecretServiceKeychain::remove(const std::string& service, const std::string& account, QObject* receiver,
                                   std::function<void(bool)> then) {
    if (!isReachable()) {
        QTimer::singleShot(0, receiver, [then = std::move(then)] { then(false); });
        return;
    }
    using QKeychain::DeletePasswordJob;
    run<DeletePasswordJob>(new DeletePasswordJob(QString::fromStdString(service)), account, receiver,
                           [then = std::move(then)](DeletePasswordJob& finished) {
                               then(finished.error() == QKeychain::NoError ||
                                    finished.error() == QKeychain::EntryNotFound);
                           });
}

std::unique_ptr<Keychain> makeKeychain() {
    return std::make_unique<SecretServiceKeychain>();
}

} // namespace varnet::platform
