#include "VarnetApp/Localization/BatteryDisplay.h"

#include "VarnetApp/Localization/DecimalRounding.h"

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr double longestTime = 2880; ///< minutes

QString number(std::optional<double> value, int decimals, const QString& unit, const QLocale& locale) {
    if (!value || !std::isfinite(*value)) return QStringLiteral("—");
    return locale.toString(roundedHalfEven(*value, decimals), 'f', decimals) + unit;
}

} // namespace

QString BatteryDisplay::percent(std::optional<double> value, const QLocale& locale) {
    return number(value, 0, "%", locale);
}

QString BatteryDisplay::watts(std::optional<double> value, const QLocale& locale) {
    if (value) value = std::abs(*value);
    return number(value, 1, " W", locale);
}

QString BatteryDisplay::score(std::optional<double> value, const QLocale& locale) {
    return number(value, 1, {}, locale);
}

QString BatteryDisplay::time(std::optional<double> minutes) {
    if (!minutes || !(*minutes > 0) || *minutes > longestTime) return QStringLiteral("Estimating…");
    const int whole = std::max(1, static_cast<int>(std::lround(*minutes)));
    if (whole < 60) return QStringLiteral("%1 min").arg(whole);
    return QStringLiteral("%1 hr %2 min").arg(whole / 60).arg(whole % 60);
}

} // namespace varnet
