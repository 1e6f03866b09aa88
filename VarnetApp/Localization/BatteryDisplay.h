#pragma once

#include <QLocale>
#include <QString>

#include <optional>

/// Battery figures as the user reads them.
namespace varnet::BatteryDisplay {

/// "82%"; "—" when it is not known.
QString percent(std::optional<double> value, const QLocale& locale);
/// The magnitude: "12.3 W".
QString watts(std::optional<double> value, const QLocale& locale);
/// An energy score: "9.4".
QString score(std::optional<double> value, const QLocale& locale);
/// "48 min" or "3 hr 24 min"; "Estimating…" for what is not known or out of range.
QString time(std::optional<double> minutes);

} // namespace varnet::BatteryDisplay
