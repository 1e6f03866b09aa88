#include "VarnetApp/CloudViews/CloudModel.h"

#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetApp/CloudViews/CloudTexts.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Platform/FileOpening.h"

#include <utility>

namespace varnet {

std::vector<QByteArray> CloudDeviceRow::roles() {
    return {"name", "note", "mode", "here"};
}

QVariant CloudDeviceRow::value(int role) const {
    switch (role) {
    case 0:
        return QString::fromStdString(device.name);
    case 1:
        return CloudTexts::device(device, locale);
    case 2:
        return QString::fromUtf8(
            CloudTexts::modes.at(static_cast<std::size_t>(CloudTexts::indexOf(device.mode))).title);
    case 3:
        return isThis;
    default:
        return {};
    }
}

void CloudModel::begin() {
    if (CloudStore* const cloud = context().cloud)
        connect(cloud, &CloudStore::changed, this, &CloudModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &CloudModel::refresh);
    refresh();
}

QStringList CloudModel::modeTitles() const {
    QStringList titles;
    for (const CloudTexts::Mode& mode : CloudTexts::modes)
        titles.append(QString::fromUtf8(mode.title));
    return titles;
}

QStringList CloudModel::modeNotes() const {
    QStringList notes;
    for (const CloudTexts::Mode& mode : CloudTexts::modes)
        notes.append(QString::fromUtf8(mode.note));
    return notes;
}

void CloudModel::refresh() {
    Shown next;
    const QLocale& locale = context().localization.locale();
    if (const CloudStore* const cloud = context().cloud) {
        next.configured = cloud->configured();
        next.signedIn = cloud->signedIn();
        next.signingIn = cloud->signingIn();
        next.busy = cloud->busy();
        next.email = cloud->email();
        next.mode = CloudTexts::indexOf(cloud->mode().toStdString());
        next.message = cloud->message();
        next.lastBackup = CloudTexts::lastBackup(cloud->lastBackup(), locale);
        next.state =
            CloudTexts::state(next.configured, next.signedIn, next.email, cloud->mode().toStdString());
    } else {
        next.state = CloudTexts::state(false, false, {}, {});
    }
    refreshDevices();
    if (next == shown_) return;
    shown_ = std::move(next);
    emit changed();
}

void CloudModel::refreshDevices() {
    std::vector<CloudDeviceRow> rows;
    const CloudStore* const cloud = context().cloud;
    const std::size_t before = devices_.size();
    if (cloud && cloud->signedIn())
        for (const CloudDevice& device : cloud->devices())
            rows.push_back({device.id, device, device.id == cloud->credentials()->deviceID,
                            context().localization.locale()});
    devices_.update(std::move(rows));
    if (devices_.size() != before) emit changed();
}

void CloudModel::signIn() {
    if (context().cloud)
        context().cloud->signIn([files = context().files](const QUrl& url) {
            return files && files->openUrl(url.toEncoded().toStdString());
        });
}

void CloudModel::cancelSignIn() {
    if (context().cloud) context().cloud->cancelSignIn();
}

void CloudModel::choose(int mode) {
    if (!context().cloud || mode < 0 || static_cast<std::size_t>(mode) >= CloudTexts::modes.size()) return;
    context().cloud->setMode(CloudTexts::modes.at(static_cast<std::size_t>(mode)).name);
}

void CloudModel::disconnectAccount() {
    if (context().cloud) context().cloud->disconnect();
}

void CloudModel::restore() {
    if (context().cloud) context().cloud->restoreCollection();
}

void CloudModel::openAccount() {
    if (context().cloud)
        context().cloud->openAccount([files = context().files](const QUrl& url) {
            return files && files->openUrl(url.toEncoded().toStdString());
        });
}

void CloudModel::dismissMessage() {
    if (context().cloud) context().cloud->dismissMessage();
}

void CloudModel::openCloud() {
    if (context().actions.openCloud) context().actions.openCloud();
}

void CloudModel::openFeedback() {
    if (context().actions.openFeedback) context().actions.openFeedback();
}

} // namespace varnet
