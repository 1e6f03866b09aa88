#include "VarnetApp/CloudViews/CloudTexts.h"

#include "VarnetApp/Localization/DateTexts.h"

#include <QDateTime>

#include <algorithm>

namespace varnet::CloudTexts {

namespace {

std::optional<Date> parsed(const std::optional<std::string>& text) {
    if (!text) return std::nullopt;
    const QDateTime date = QDateTime::fromString(QString::fromStdString(*text), Qt::ISODateWithMs);
    if (!date.isValid()) return std::nullopt;
    return Date::fromUnix(static_cast<double>(date.toMSecsSinceEpoch()) / 1000);
}

} // namespace

int indexOf(std::string_view mode) {
    const auto* const found = std::ranges::find(modes, mode, &Mode::name);
    return found == modes.end() ? 0 : static_cast<int>(found - modes.begin());
}

QString state(bool configured, bool signedIn, const QString& email, std::string_view mode) {
    if (!configured) return QStringLiteral("Cloud is not configured in this build.");
    if (!signedIn) return QStringLiteral("Not connected. Everything stays on this Mac.");
    switch (indexOf(mode)) {
    case 1:
        return "Private backup to " + email;
    case 2:
        return "Backup and shared statistics, connected as " + email;
    default:
        return "Connected as " + email + ". No backup.";
    }
}

QString lastBackup(std::optional<Date> date, const QLocale& locale) {
    return date ? "Last backup " + DateTexts::moment(*date, locale) : QStringLiteral("No backup yet.");
}

QString device(const CloudDevice& device, const QLocale& locale) {
    if (const auto archived = parsed(device.archivedAt))
        return "Archived " + DateTexts::moment(*archived, locale);
    if (indexOf(device.mode) == 0 && !device.lastBackupAt) return QStringLiteral("No backup");
    return lastBackup(parsed(device.lastBackupAt), locale);
}

} // namespace varnet::CloudTexts
