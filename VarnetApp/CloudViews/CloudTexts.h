#pragma once

#include "VarnetApp/CloudStore/CloudAccount.h"
#include "VarnetCore/Base/Date.h"

#include <QLocale>
#include <QString>

#include <array>
#include <optional>
#include <string_view>

/// What the cloud's views say: whole English sentences.
namespace varnet::CloudTexts {

/// A way of backing up, as it is offered.
struct Mode {
    const char* name; ///< as the service knows it
    const char* title;
    const char* note;
};

/// In the order in which they are offered; the first is how everybody begins.
inline constexpr std::array<Mode, 3> modes{{
    {"off", "No backup", "Nothing is sent. What your archive already holds is kept."},
    {"private", "Private backup",
     "A copy of your badges, records, daily summaries and battery history, for you alone."},
    {"community", "Backup and shared statistics",
     "The same copy. Its figures are also counted in statistics that everybody can read, without your name."},
}};

/// Where a mode stands among those that are offered; the first for an unknown one.
int indexOf(std::string_view mode);

/// One line on where things stand, for the settings.
QString state(bool configured, bool signedIn, const QString& email, std::string_view mode);
/// "Last backup 21 November 2025, 14:31"; in words when there was none.
QString lastBackup(std::optional<Date> date, const QLocale& locale);
/// How and when a device backed up.
QString device(const CloudDevice& device, const QLocale& locale);

} // namespace varnet::CloudTexts
