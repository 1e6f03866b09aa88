#include "VarnetApp/Platform/linux/BusNameInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <utility>

namespace varnet::platform {

namespace {

constexpr int openTimeout = 5'000;

const QString& name() {
    static const QString text = QStringLiteral("com.varnet.Varnet");
    return text;
}
const QString& path() {
    static const QString text = QStringLiteral("/com/varnet/Varnet");
    return text;
}
const QString& interface() {
    static const QString text = QStringLiteral("org.freedesktop.Application");
    return text;
}
const QString& waylandToken() {
    static const QString key = QStringLiteral("activation-token");
    return key;
}
const QString& startupToken() {
    static const QString key = QStringLiteral("desktop-startup-id");
    return key;
}

} // namespace

void ApplicationObject::Activate(const QVariantMap& platformData) {
    ActivateAction({}, {}, platformData);
}

void ApplicationObject::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void ApplicationObject::ActivateAction(const QString& action, const QVariantList&,
                                       const QVariantMap& platformData) {
    const QString token = platformData.value(waylandToken()).toString();
    emit activated(action, token.isEmpty() ? platformData.value(startupToken()).toString() : token);
}

BusNameInstance::BusNameInstance(const QString& address, QString token)
    : token_(std::move(token)), bus_(BusConnection::open(address)) {
    // Queued, so that whoever asked has the answer before the window is built.
    QObject::connect(
        &object_, &ApplicationObject::activated, &object_,
        [this](const QString& action, const QString& activation) {
            if (!action.isEmpty() && handlers_.asked) {
                handlers_.asked(action.toStdString(), activation.toStdString());
            } else if (handlers_.activated) {
                handlers_.activated(activation.toStdString());
            }
        },
        Qt::QueuedConnection);
}

BusNameInstance::~BusNameInstance() = default;

void BusNameInstance::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
}

SingleInstance::Claim BusNameInstance::claim() {
    if (!bus_) {
        return Claim::noBus;
    }
    // The object stands before the name is taken: whoever sees the name can be answered.
    (*bus_)->registerObject(path(), &object_, QDBusConnection::ExportAllSlots);
    const auto reply = (*bus_)->interface()->registerService(
        name(), QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        return Claim::noBus;
    }
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        return Claim::first;
    }
    (*bus_)->unregisterObject(path());
    return Claim::second;
}

bool BusNameInstance::requestOpen() {
    return ask(QStringLiteral("Activate"), {});
}

bool BusNameInstance::requestAction(const std::string& action) {
    return ask(QStringLiteral("ActivateAction"), {QString::fromStdString(action), QVariantList()});
}

bool BusNameInstance::ask(const QString& member, QVariantList arguments) {
    if (!bus_) {
        return false;
    }
    QVariantMap platformData;
    if (!token_.isEmpty()) {
        platformData = {{waylandToken(), token_}, {startupToken(), token_}};
    }
    arguments.append(platformData);
    QDBusMessage call = QDBusMessage::createMethodCall(name(), path(), interface(), member);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return (*bus_)->call(call, QDBus::Block, openTimeout).type() == QDBusMessage::ReplyMessage;
}

std::unique_ptr<SingleInstance> makeSingleInstance() {
    const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return std::make_unique<BusNameInstance>(
        sessionBusAddress(), token.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : token);
}

} // namespace varnet::platform
