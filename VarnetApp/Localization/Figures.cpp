#include "VarnetApp/Localization/Figures.h"

#include <array>
#include <cmath>

namespace varnet {

namespace {

bool isFigure(std::optional<double> value) noexcept {
    return value && std::isfinite(*value);
}

constexpr std::array<const char*, 6> byteUnits{"KB", "MB", "GB", "TB", "PB", "EB"};

} // namespace

QString Figures::withPercentSign(const QString& number) const {
    // Czech sets the sign apart by a space that does not break.
    return locale_.language() == QLocale::Czech ? number + QChar(0x00A0) + "%" : number + "%";
}

QString Figures::wholePercent(std::optional<double> percent) const {
    if (!isFigure(percent)) return unknown();
    return withPercentSign(locale_.toString(std::nearbyint(*percent), 'f', 0));
}

QString Figures::percent(std::optional<double> percent) const {
    if (!isFigure(percent)) return unknown();
    return withPercentSign(locale_.toString(*percent, 'f', 1));
}

QString Figures::share(std::optional<double> percent) const {
    return isFigure(percent) && *percent < 10 ? this->percent(percent) : wholePercent(percent);
}

QString Figures::scaled(double bytes, double step, Tenths tenths) const {
    double value = bytes / step;
    std::size_t unit = 0;
    // A figure that would round up to a whole step is one of the next unit.
    while (unit + 1 < byteUnits.size() && value >= step - (unit == 0 ? 0.5 : 0.05)) {
        value /= step;
        ++unit;
    }
    // A file of a few bytes is not nothing.
    const double shown = unit > 0    ? std::nearbyint(value * 10) / 10
                         : value < 1 ? std::ceil(value)
                                     : std::nearbyint(value);
    const bool whole = unit == 0 || (tenths == Tenths::unlessZero && shown == std::floor(shown));
    return locale_.toString(shown, 'f', whole ? 0 : 1) + " " + byteUnits[unit];
}

QString Figures::memory(std::optional<std::uint64_t> bytes) const {
    return bytes ? scaled(static_cast<double>(*bytes), 1024, Tenths::unlessZero) : unknown();
}

QString Figures::fileSize(std::uint64_t bytes) const {
    return scaled(static_cast<double>(bytes), 1000, Tenths::unlessZero);
}

QString Figures::diskSize(std::uint64_t bytes) const {
    return scaled(static_cast<double>(bytes), 1000, Tenths::always);
}

QString Figures::count(std::uint64_t number) const {
    return locale_.toString(static_cast<qulonglong>(number));
}

QString Figures::speed(std::optional<double> rpm) const {
    if (!isFigure(rpm)) return unknown();
    return locale_.toString(std::nearbyint(*rpm), 'f', 0) + " RPM";
}

} // namespace varnet
