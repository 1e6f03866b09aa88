#pragma once

#include <QLocale>
#include <QString>

#include <cstdint>
#include <optional>

namespace varnet {

/// Figures as the user reads them, in the chosen language's own way. What is not known is "—".
class Figures {
public:
    static QString unknown() { return QStringLiteral("—"); }

    explicit Figures(const QLocale& locale) : locale_(locale) {}

    /// "46%"; half to even.
    QString wholePercent(std::optional<double> percent) const;
    /// "9.8%".
    QString percent(std::optional<double> percent) const;
    /// Memory in units of 1,024: "4.6 GB", "912 MB", "640 KB".
    QString memory(std::optional<std::uint64_t> bytes) const;
    /// Room on a disk in units of 1,000, as disks are sold: "418.6 GB", "640 KB". Sizes stand in columns:
    /// "6.0 GB".
    QString diskSize(std::uint64_t bytes) const;
    /// The same in a sentence: "12.3 GB", "6 GB".
    QString fileSize(std::uint64_t bytes) const;
    /// "46%" from 10 on, "9.8%" below.
    QString share(std::optional<double> percent) const;
    /// "2,840".
    QString count(std::uint64_t number) const;
    /// "2,840 RPM".
    QString speed(std::optional<double> rpm) const;

private:
    enum class Tenths : std::uint8_t { always, unlessZero };

    QString scaled(double bytes, double step, Tenths tenths) const;
    QString withPercentSign(const QString& number) const;

    QLocale locale_;
};

} // namespace varnet
