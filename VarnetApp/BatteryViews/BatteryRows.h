#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>
#include <QVariant>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

struct BatteryDashboard;
struct BatterySession;
struct Date;

/// One of the six small cards.
struct BatteryFigure {
    std::string key; ///< "health", "cycles", "temperature", "capacity", "condition" or "adapter"
    QString figure;
    QString about; ///< more about it; may be empty
    bool known = false;
    bool worrying = false;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const BatteryFigure&, const BatteryFigure&) = default;
};
std::vector<BatteryFigure> batteryFigures(const BatteryDashboard* battery, const QLocale& locale);

/// What a group has used of a session.
struct BatteryApp {
    std::string key; ///< the group's id
    std::string name;
    std::optional<double> score;
    double fraction = 0; ///< of the hungriest one's, 0 to 1
    bool partial = false;
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const BatteryApp&, const BatteryApp&) = default;
};
/// The hungriest first; of equals in the order of their names.
std::vector<BatteryApp> hungriestApps(const BatterySession& session, std::size_t most, const QLocale& locale);

/// A session on battery in the list of earlier ones.
struct BatterySessionRow {
    std::string key; ///< its id
    QString when;
    QString measured;
    QString charges;
    QString apps; ///< the hungriest, by name; "—" when nothing was scored

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const BatterySessionRow&, const BatterySessionRow&) = default;
};
BatterySessionRow sessionRow(const BatterySession& session, Date now, const QLocale& locale);

} // namespace varnet
