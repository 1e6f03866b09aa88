#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Sensors/FanSnapshot.h"

#include <QLocale>
#include <QString>

#include <string_view>

/// The settings' lines that are made of data: whole English sentences.
namespace varnet::SettingsTexts {

/// What an ignored finding is called: its incident may be long over, so its key is all that is left of it.
QString ignoredFinding(std::string_view id);
/// "Ignored findings (2)".
QString ignoredFindings(std::size_t count);
/// The fastest fan's speed, or in words why there is none.
QString fans(const FanSnapshot& fans, const Figures& figures);
/// A moment of the last days, in the locale's own way: the time of day, and before today the day with it.
/// @param now what today is
QString moment(Date date, Date now, const QLocale& locale);

} // namespace varnet::SettingsTexts
