#pragma once

#include "VarnetCore/Findings/Finding.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"

#include <QByteArray>
#include <QLocale>
#include <QString>
#include <QVariant>

#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// One card of the four readings.
struct MetricEntry {
    std::string key; ///< "memory", "fans", "battery" or "servers"
    QString figure;
    QString note;
    std::optional<double> share; ///< how full the bar is, 0 to 1
    bool known = false;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const MetricEntry&, const MetricEntry&) = default;
};

/// A kind of work and its share of the machine.
struct CategoryEntry {
    std::string key; ///< "Apps", "Dev" or "Other"
    std::optional<double> percent;
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const CategoryEntry&, const CategoryEntry&) = default;
};

/// One of the groups that use the most CPU.
struct ContributorEntry {
    std::string key; ///< the group's id
    std::string name;
    std::string subtitle;
    GroupKind kind = GroupKind::unassigned;
    std::optional<double> percent; ///< of the whole machine
    double fraction = 0;           ///< of the busiest one's, 0 to 1
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const ContributorEntry&, const ContributorEntry&) = default;
};

/// A finding that is shown.
struct AttentionEntry {
    std::string key; ///< the finding's id
    FindingKind kind = FindingKind::highCPU;
    std::string title;
    std::string explanation;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const AttentionEntry&, const AttentionEntry&) = default;
};

} // namespace varnet
