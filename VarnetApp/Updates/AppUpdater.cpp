#include "VarnetApp/Updates/AppUpdater.h"

#include <QSettings>

#include <utility>

namespace varnet {

namespace {

constexpr const char* migratedKey = "sparklePreferencesMigrated";
constexpr const char* ownKey = "SUEnableAutomaticChecks";
constexpr const char* olderKey = "automaticUpdateChecks";

} // namespace

AppUpdater::AppUpdater(Setup setup, QObject* parent) : QObject(parent), setup_(std::move(setup)) {
    // A private copy checks for nothing, but keeps the choice for one that does.
    if (!setup_.framework && setup_.defaults)
        automaticEnabled_ = setup_.defaults->value(ownKey, automaticEnabled_).toBool();
}

void AppUpdater::start() {
    if (!setup_.framework) {
        say("Private preview. Public updates are disabled in this copy.");
        return;
    }
    if (started_) return;
    configure();
    if (const auto error = setup_.framework->start()) {
        say("Couldn’t start software updates. " + *error);
    } else {
        started_ = true;
    }
    refreshState();
}

void AppUpdater::configure() {
    if (std::exchange(configured_, true)) return;
    QSettings* const defaults = setup_.defaults;
    // Once in the life of an installation: a choice of earlier moves to where the framework looks for it.
    if (defaults && !defaults->value(migratedKey).toBool()) {
        if (!defaults->contains(ownKey) && defaults->contains(olderKey))
            defaults->setValue(ownKey, defaults->value(olderKey).toBool());
        defaults->setValue(migratedKey, true);
    }
    setup_.framework->listen({
        .didFindValidUpdate =
            [this](const QString& version) { say("Version " + version + " is ready to install.", version); },
        .didNotFindUpdate = [this] { say("You’re up to date. Version " + setup_.version, std::nullopt); },
        .willDownloadUpdate = [this](const QString& version) { say("Downloading version " + version); },
        .didExtractUpdate = [this] { say("Ready to install. The app will restart automatically."); },
        .didAbort = [this] { say("Couldn’t finish the update. Try again when you’re ready."); },
        .shouldPostponeRelaunch =
            [this](std::function<void()> takeOver) { return postpone(std::move(takeOver)); },
        .stateChanged = [this] { refreshState(); },
    });
}

void AppUpdater::refreshState() {
    const UpdateFramework& framework = *setup_.framework;
    const bool same = canCheckForUpdates_ == framework.canCheckForUpdates() &&
                      sessionInProgress_ == framework.sessionInProgress() &&
                      lastChecked_ == framework.lastUpdateCheckDate() &&
                      automaticEnabled_ == framework.automaticallyChecksForUpdates();
    if (same) return;
    canCheckForUpdates_ = framework.canCheckForUpdates();
    sessionInProgress_ = framework.sessionInProgress();
    lastChecked_ = framework.lastUpdateCheckDate();
    automaticEnabled_ = framework.automaticallyChecksForUpdates();
    emit changed();
}

void AppUpdater::checkForUpdates() {
    if (!setup_.framework || !started_) return;
    emit asked();
    setup_.framework->checkForUpdates();
}

void AppUpdater::openUpdate() {
    if (!setup_.framework || !started_) return;
    emit asked();
    setup_.framework->openUpdate();
}

void AppUpdater::setAutomaticEnabled(bool automatic) {
    if (automatic == automaticEnabled_) return;
    automaticEnabled_ = automatic;
    if (setup_.framework) {
        setup_.framework->setAutomaticallyChecksForUpdates(automatic);
    } else if (setup_.defaults) {
        setup_.defaults->setValue(ownKey, automatic);
    }
    emit changed();
}

bool AppUpdater::postpone(std::function<void()> takeOver) {
    if (installationIsSafe()) return false;
    say("Finishing the current cleanup before restarting…");
    if (!std::exchange(takeOver_, std::move(takeOver))) askAgain();
    return true;
}

void AppUpdater::askAgain() {
    setup_.mainQueue->postAfter(patience, [this, alive = std::weak_ptr(alive_)] {
        if (!alive.lock()) return;
        if (!installationIsSafe()) {
            askAgain();
        } else if (takeOver_) {
            std::exchange(takeOver_, {})();
        }
    });
}

void AppUpdater::say(const QString& message) {
    say(message, availableVersion_);
}

void AppUpdater::say(const QString& message, std::optional<QString> available) {
    if (message_ == message && availableVersion_ == available) return;
    message_ = message;
    availableVersion_ = std::move(available);
    emit changed();
}

} // namespace varnet
