// The store's operations on settings: what the user chose, and what the desktop made of it.

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Platform/LoginItem.h"
#include "VarnetApp/Platform/Notifications.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>

namespace varnet {

namespace {

using LoginStatus = platform::LoginItemStatus;

bool isRegistered(LoginStatus status) noexcept {
    return status == LoginStatus::enabled || status == LoginStatus::requiresApproval;
}

} // namespace

void VarnetStore::finishOnboarding(bool launchAtLogin) {
    setLogin(launchAtLogin);
    settings_.setHasOnboarded(true);
    emit settingsChanged();
}

void VarnetStore::setPreviewOnboarded(bool onboarded) {
    if (!isPreview_ || onboarded == settings_.hasOnboarded()) return;
    settings_.setHasOnboarded(onboarded);
    emit settingsChanged();
}

void VarnetStore::setPreview(std::shared_ptr<const MonitorSnapshot> snapshot) {
    if (!isPreview_ || !snapshot) return;
    latestSnapshot_ = snapshot;
    publish(std::move(snapshot));
}

void VarnetStore::setPreviewHistory(std::map<std::string, Date> ignored, std::vector<HistoryRecord> actions) {
    if (isPreview_) mirrorArchive(std::move(ignored), std::move(actions), std::nullopt);
}

void VarnetStore::setAppearance(const QString& appearance) {
    if (appearance == settings_.appearance()) return;
    settings_.setAppearance(appearance);
    emit settingsChanged();
    emit appearanceChanged();
}

void VarnetStore::setShowMenuCPU(bool shown) {
    if (shown == settings_.showMenuCPU()) return;
    settings_.setShowMenuCPU(shown);
    emit settingsChanged();
    emit menuChanged();
}

void VarnetStore::setNotifications(bool enabled) {
    if (!enabled || !notificationService_) {
        settings_.setNotifications(false);
        emit settingsChanged();
        if (enabled)
            setSettingsMessage("Notifications were not allowed. You can enable them in System Settings.");
        return;
    }
    notificationService_->requestAuthorization([this, self = QPointer(this)](bool granted) {
        if (!self) return;
        settings_.setNotifications(granted);
        emit settingsChanged();
        if (!granted)
            setSettingsMessage("Notifications were not allowed. You can enable them in System Settings.");
    });
}

void VarnetStore::setLogin(bool enabled) {
    if (isPreview_ || !loginItem_) return;
    loginError_.clear();
    std::expected<void, std::string> done;
    const bool registered = isRegistered(loginItem_->status());
    if (enabled && !registered) done = loginItem_->registerItem();
    if (!enabled && registered) done = loginItem_->unregisterItem();
    refreshLoginStatus();
    if (!done) {
        loginError_ = "Could not change launch at login: " + QString::fromStdString(done.error());
    } else if (enabled && !launchAtLogin_ && !loginNeedsApproval_) {
        loginError_ = "Could not change launch at login. Move the app to Applications and try again.";
    }
    emit loginChanged();
}

void VarnetStore::openLoginSettings() {
    if (loginItem_) loginItem_->openSettings();
}

void VarnetStore::refreshLoginStatus() {
    const LoginStatus status = loginItem_ ? loginItem_->status() : LoginStatus::notFound;
    launchAtLogin_ = status == LoginStatus::enabled;
    loginNeedsApproval_ = status == LoginStatus::requiresApproval;
    emit loginChanged();
}

void VarnetStore::resetCollection() {
    if (collaborators_.resetCollection) collaborators_.resetCollection();
}

void VarnetStore::openFolderAccess() {
    QStringList folders = settings_.projectFolders();
    bool stale = false;
    for (QString& folder : folders) {
        const QFileInfo info(folder);
        if (!info.isDir() || !info.isReadable()) continue;
        const QString resolved = info.canonicalFilePath();
        folderAccess_.append(resolved);
        stale = stale || resolved != folder;
        folder = resolved;
    }
    if (stale) settings_.setProjectFolders(folders);
}

void VarnetStore::grantProjectAccess(const QUrl& url) {
    const QString chosen = url.isLocalFile() ? url.toLocalFile() : url.toString();
    const QFileInfo info(chosen);
    folderAccess_.append(QDir::cleanPath(info.absoluteFilePath()));
    QString trouble;
    if (!info.isDir()) trouble = QStringLiteral("%1 is not a folder.").arg(chosen);
    if (trouble.isEmpty() && !info.isReadable()) trouble = QStringLiteral("%1 cannot be read.").arg(chosen);
    if (trouble.isEmpty())
        trouble = settings_.setProjectFolders(settings_.projectFolders() << info.canonicalFilePath());
    setSettingsMessage(trouble.isEmpty()
                           ? "Folder access saved. Project metadata will be refreshed on the next sample."
                           : "Folder selected for this session; persistent access could not be saved: " +
                                 trouble);
    runOnEngine([](MonitorEngine& engine) { engine.invalidateProjects(); });
}

} // namespace varnet
