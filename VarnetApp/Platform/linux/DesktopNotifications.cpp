#include "VarnetApp/Platform/linux/DesktopNotifications.h"

#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <cstddef>
#include <utility>

namespace varnet::platform {

namespace {

// A daemon that has to be started first, on a machine that is busy logging in.
constexpr int answerTimeout = 10'000;
// A daemon that never tells of closed notifications must not make this grow for ever.
constexpr std::size_t mostPlaces = 256;

const QString& service() {
    static const QString name = QStringLiteral("org.freedesktop.Notifications");
    return name;
}
const QString& path() {
    static const QString name = QStringLiteral("/org/freedesktop/Notifications");
    return name;
}

QDBusMessage method(const QString& name) {
    return QDBusMessage::createMethodCall(service(), path(), service(), name);
}

} // namespace

DesktopNotifications::DesktopNotifications(const QString& address) : bus_(BusConnection::open(address)) {
    if (!bus_) {
        return;
    }
    QDBusConnection& bus = **bus_;
    bus.connect(service(), path(), service(), QStringLiteral("ActivationToken"), this,
                SLOT(onActivationToken(uint, QString)));
    bus.connect(service(), path(), service(), QStringLiteral("ActionInvoked"), this,
                SLOT(onActionInvoked(uint, QString)));
    bus.connect(service(), path(), service(), QStringLiteral("NotificationClosed"), this,
                SLOT(onNotificationClosed(uint, uint)));
    watcher_ =
        std::make_unique<QDBusServiceWatcher>(service(), bus, QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
                     &DesktopNotifications::onOwnerChanged);
}

DesktopNotifications::~DesktopNotifications() = default;

void DesktopNotifications::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
}

void DesktopNotifications::requestAuthorization(std::function<void(bool granted)> answer) {
    askCapabilities(std::move(answer));
}

void DesktopNotifications::askCapabilities(std::function<void(bool answered)> then) {
    if (!bus_) {
        QTimer::singleShot(0, this, [then = std::move(then)] { then(false); });
        return;
    }
    bus_->call(method(QStringLiteral("GetCapabilities")), answerTimeout, this,
               [this, then = std::move(then)](const QDBusMessage& reply) {
                   const bool answered =
                       reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("as");
                   if (answered) {
                       const QStringList names = reply.arguments().constFirst().toStringList();
                       capabilities_ = {.markup = names.contains(QLatin1String("body-markup")),
                                        .actions = names.contains(QLatin1String("actions"))};
                   }
                   then(answered);
               });
}

void DesktopNotifications::deliver(const std::string& key, const std::string& title,
                                   const std::string& body) {
    if (places_.size() >= mostPlaces && !places_.contains(key)) {
        places_.clear();
    }
    places_[key].next = Text{title, body};
    pump(key);
}

void DesktopNotifications::pump(const std::string& key) {
    const auto found = places_.find(key);
    if (found == places_.end() || found->second.sending || !found->second.next) {
        return;
    }
    if (!capabilities_) {
        if (!std::exchange(asking_, true)) {
            askCapabilities([this](bool answered) {
                asking_ = false;
                if (!answered) {
                    places_.clear();
                }
                for (const auto& [waiting, place] : places_) {
                    pump(waiting);
                }
            });
        }
        return;
    }
    Place& place = found->second;
    place.sending = true;
    const Text text = std::move(*std::exchange(place.next, std::nullopt));
    send(key, text, place.id);
}

void DesktopNotifications::send(const std::string& key, const Text& text, std::uint32_t replaces) {
    const QString title = QString::fromStdString(text.title);
    QString body = QString::fromStdString(text.body);
    if (capabilities_->markup) {
        body = body.toHtmlEscaped();
    }
    QStringList actions;
    if (capabilities_->actions) {
        actions = {QStringLiteral("default"), QStringLiteral("Open overview")};
    }
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("com.varnet.Varnet")},
                            {QStringLiteral("suppress-sound"), true}};
    QDBusMessage notify = method(QStringLiteral("Notify"));
    notify.setArguments({QStringLiteral("Varnet"), replaces, QStringLiteral("com.varnet.Varnet"), title, body,
                         actions, hints, -1});
    bus_->call(notify, answerTimeout, this, [this, key, daemon = daemon_](const QDBusMessage& reply) {
        const auto found = places_.find(key);
        if (daemon != daemon_ || found == places_.end()) {
            return;
        }
        Place& place = found->second;
        place.sending = false;
        const bool shown =
            reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("u");
        place.id = shown ? reply.arguments().constFirst().toUInt() : 0;
        if (place.next) {
            pump(key);
        } else if (!shown) {
            places_.erase(found);
        }
    });
}

void DesktopNotifications::onOwnerChanged(const QString&, const QString&, const QString&) {
    ++daemon_;
    capabilities_.reset();
    tokens_.clear();
    // What was on the screen has gone with its daemon; what was still to be shown has not.
    std::erase_if(places_, [](const auto& entry) { return !entry.second.next; });
    for (auto& [key, place] : places_) {
        place.id = 0;
        place.sending = false;
    }
    if (!places_.empty()) {
        pump(places_.begin()->first);
    }
}

std::map<std::string, DesktopNotifications::Place>::iterator DesktopNotifications::placeOf(std::uint32_t id) {
    auto place = places_.begin();
    while (place != places_.end() && (id == 0 || place->second.id != id)) {
        ++place;
    }
    return place;
}

void DesktopNotifications::onActivationToken(uint id, const QString& token) {
    // Signals go to every client of the daemon: those about others' notifications are none of ours.
    if (placeOf(id) != places_.end()) {
        tokens_[id] = token;
    }
}

void DesktopNotifications::onActionInvoked(uint id, const QString& action) {
    const auto place = placeOf(id);
    if (place == places_.end() || action != QLatin1String("default")) {
        return;
    }
    const auto token = tokens_.extract(id);
    if (handlers_.activated) {
        // Copies: the handler may well deliver something.
        const auto activated = handlers_.activated;
        const std::string key = place->first;
        activated(key, token ? token.mapped().toStdString() : std::string());
    }
}

void DesktopNotifications::onNotificationClosed(uint id, uint) {
    tokens_.erase(id);
    const auto found = placeOf(id);
    if (found == places_.end()) {
        return;
    }
    if (found->second.sending || found->second.next) {
        found->second.id = 0;
    } else {
        places_.erase(found);
    }
}

std::unique_ptr<Notifications> makeNotifications() {
    return std::make_unique<DesktopNotifications>(sessionBusAddress());
}

} // namespace varnet::platform
