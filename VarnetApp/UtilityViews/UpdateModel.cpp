#include "VarnetApp/UtilityViews/UpdateModel.h"

#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Updates/AppUpdater.h"
#include "VarnetApp/UtilityViews/UpdateTexts.h"

#include <utility>

namespace varnet {

void UpdateModel::begin() {
    AppUpdater* const updater = context().updater;
    if (!updater) return;
    connect(updater, &AppUpdater::changed, this, &UpdateModel::refresh);
    connect(updater, &AppUpdater::asked, this, &UpdateModel::asked);
    connect(&context().localization, &AppLocalization::languageChanged, this, &UpdateModel::refresh);
    refresh();
}

void UpdateModel::refresh() {
    const AppUpdater& updater = *context().updater;
    Shown next{
        .message = updater.message(),
        .lastChecked = UpdateTexts::lastChecked(updater.lastChecked(), context().localization.locale()),
        .available = UpdateTexts::available(updater.availableVersion()),
        .automatic = updater.automaticEnabled(),
        .canCheck = updater.canCheckForUpdates(),
        .notNow = UpdateTexts::notNow(updater.sessionInProgress(), updater.message()),
        .busy = updater.sessionInProgress(),
    };
    if (next == shown_) return;
    shown_ = std::move(next);
    emit changed();
}

void UpdateModel::setAutomatic(bool automatic) {
    if (context().updater) context().updater->setAutomaticEnabled(automatic);
}

void UpdateModel::check() {
    if (context().updater) context().updater->checkForUpdates();
}

void UpdateModel::open() {
    if (context().updater) context().updater->openUpdate();
}

} // namespace varnet
