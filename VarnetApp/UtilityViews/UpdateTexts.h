#pragma once

#include "VarnetCore/Base/Date.h"

#include <QLocale>
#include <QString>

#include <optional>

/// The lines about updates that are made of data: whole English sentences.
namespace varnet::UpdateTexts {

/// "Version 1.4.0 available"; empty: there is none.
QString available(const std::optional<QString>& version);
/// "Last checked 21 November 2025, 14:31"; empty: never.
QString lastChecked(std::optional<Date> date, const QLocale& locale);
/// Why nobody can look for an update now.
/// @param message what is said of updates; a copy that never looks says why there
QString notNow(bool sessionInProgress, const QString& message);

} // namespace varnet::UpdateTexts
