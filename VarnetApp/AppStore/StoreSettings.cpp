#include "VarnetApp/AppStore/StoreSettings.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace varnet {

namespace {

constexpr const char* notificationDatesKey = "notificationDates";
constexpr const char* projectFoldersKey = "projectFolderBookmarks";

} // namespace

QVariant StoreSettings::value(const QString& key) const {
    return defaults_ ? defaults_->value(key) : memory_.value(key);
}

void StoreSettings::set(const QString& key, const QVariant& value) {
    if (defaults_) {
        defaults_->setValue(key, value);
    } else {
        memory_[key] = value;
    }
}

bool StoreSettings::flag(const QString& key, bool fallback) const {
    const QString text = value(key).toString();
    if (text == QLatin1String("true")) return true;
    if (text == QLatin1String("false")) return false;
    return fallback;
}

QString StoreSettings::appearance() const {
    const QString chosen = value("appearance").toString();
    const bool known = chosen == QLatin1String("Light") || chosen == QLatin1String("Dark");
    return known ? chosen : QStringLiteral("System");
}

NotificationDates StoreSettings::notificationDates() const {
    NotificationDates dates;
    const std::string text = value(notificationDatesKey).toString().toStdString();
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, false);
    if (!json.is_object()) return dates;
    for (const auto& [key, date] : json.items())
        if (date.is_number() && std::isfinite(date.get<double>())) dates[key] = Date{date.get<double>()};
    return dates;
}

void StoreSettings::setNotificationDates(const NotificationDates& dates) {
    nlohmann::json json = nlohmann::json::object();
    for (const auto& [key, date] : dates)
        json[key] = date.seconds;
    // A key holds a name of somebody's choice: what is not UTF-8 in it is written as a replacement.
    set(notificationDatesKey,
        QString::fromStdString(json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)));
}

QStringList StoreSettings::projectFolders() const {
    return value(projectFoldersKey).toStringList();
}

QString StoreSettings::setProjectFolders(QStringList folders) {
    if (folders.size() > maximumFolders) folders.remove(0, folders.size() - maximumFolders);
    set(projectFoldersKey, folders);
    if (!defaults_) return {};
    defaults_->sync();
    if (defaults_->status() == QSettings::NoError) return {};
    return QStringLiteral("the settings file %1 cannot be written.").arg(defaults_->fileName());
}

void StoreSettings::removeLeftovers() {
    if (defaults_) defaults_->remove("personality");
}

} // namespace varnet
