#include "VarnetApp/Platform/linux/DesktopFileOpening.h"

#include "VarnetApp/Platform/linux/DesktopPlaces.h"
#include "VarnetApp/Platform/linux/ProgramStart.h"

#include <QByteArray>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace varnet::platform {

namespace {

// A file manager may have to be started first.
constexpr int answerTimeout = 25'000;

const QString& fileManager() {
    static const QString name = QStringLiteral("org.freedesktop.FileManager1");
    return name;
}
const QString& portal() {
    static const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
    return name;
}

QDBusMessage portalMethod(const QString& name) {
    return QDBusMessage::createMethodCall(portal(), QStringLiteral("/org/freedesktop/portal/desktop"),
                                          QStringLiteral("org.freedesktop.portal.OpenURI"), name);
}

/// Names on disk are bytes, and so is what is encoded here.
QString fileUri(const std::string& path) {
    return QStringLiteral("file://") +
           QString::fromLatin1(QByteArray::fromStdString(path).toPercentEncoding("/"));
}

} // namespace

DesktopFileOpening::DesktopFileOpening(QString address, std::vector<std::string> programs)
    : address_(std::move(address)), programs_(std::move(programs)) {}

DesktopFileOpening::~DesktopFileOpening() = default;

bool DesktopFileOpening::openUrl(const std::string& text) {
    const QUrl url(QString::fromStdString(text), QUrl::StrictMode);
    const QString scheme = url.scheme();
    const bool web = scheme == QLatin1String("http") || scheme == QLatin1String("https");
    if (!url.isValid() || (web ? url.host().isEmpty() : scheme != QLatin1String("mailto"))) {
        return false;
    }
    const QString encoded = url.toString(QUrl::FullyEncoded);
    if (startOpener(encoded.toStdString())) {
        return true;
    }
    if (!reachable(portal())) {
        return false;
    }
    QDBusMessage call = portalMethod(QStringLiteral("OpenURI"));
    call.setArguments({QString(), encoded, QVariantMap()});
    return (*bus_)->send(call);
}

bool DesktopFileOpening::revealFiles(const std::vector<std::string>& paths) {
    QStringList uris;
    std::string first;
    for (const std::string& path : paths) {
        struct stat info{};
        if (!path.starts_with('/') || lstat(path.c_str(), &info) != 0) {
            continue;
        }
        if (uris.isEmpty()) {
            first = path;
        }
        uris.append(fileUri(path));
    }
    if (uris.isEmpty()) {
        return false;
    }
    if (!reachable(fileManager())) {
        return openFolderOf(first);
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(fileManager(), QStringLiteral("/org/freedesktop/FileManager1"),
                                       fileManager(), QStringLiteral("ShowItems"));
    call.setArguments({uris, QString()});
    bus_->call(call, answerTimeout, this, [this, first](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            openFolderOf(first);
        }
    });
    return true;
}

bool DesktopFileOpening::openApplication(const std::vector<std::string>& names) {
    const std::string launcher = findProgram("gtk-launch", programs_);
    const std::vector<std::string> folders = DesktopPlaces::current().applications;
    for (const std::string& name : names) {
        for (const std::string& folder : folders) {
            if (::access((folder + "/" + name + ".desktop").c_str(), R_OK) != 0) {
                continue;
            }
            if (!launcher.empty() && startProgram(launcher, {name})) {
                return true;
            }
        }
        if (const std::string program = findProgram(name, programs_);
            !program.empty() && startProgram(program, {})) {
            return true;
        }
    }
    return false;
}

bool DesktopFileOpening::startOpener(const std::string& what) const {
    const std::string opener = findProgram("xdg-open", programs_);
    return !opener.empty() && startProgram(opener, {what});
}

bool DesktopFileOpening::openFolderOf(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    if (startOpener(folder)) {
        return true;
    }
    if (!reachable(portal())) {
        return false;
    }
    // The portal shows the folder of what it is handed, and only what its caller may open itself.
    const int file = ::open(path.c_str(), O_PATH | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0) {
        return false;
    }
    QDBusUnixFileDescriptor descriptor;
    descriptor.giveFileDescriptor(file);
    QDBusMessage call = portalMethod(QStringLiteral("OpenDirectory"));
    call.setArguments({QString(), QVariant::fromValue(descriptor), QVariantMap()});
    return (*bus_)->send(call);
}

bool DesktopFileOpening::reachable(const QString& service) {
    if (!bus_ || !(*bus_)->isConnected()) {
        bus_ = BusConnection::open(address_);
    }
    if (!bus_) {
        return false;
    }
    // Both are answered by the bus itself, at once.
    QDBusConnectionInterface* bus = (*bus_)->interface();
    return bus->isServiceRegistered(service).value() ||
           bus->activatableServiceNames().value().contains(service);
}

std::unique_ptr<FileOpening> makeFileOpening() {
    return std::make_unique<DesktopFileOpening>(sessionBusAddress(), DesktopPlaces::current().programs);
}

} // namespace varnet::platform
