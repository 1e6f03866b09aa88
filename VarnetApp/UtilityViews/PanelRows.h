#pragma once

#include "VarnetCore/Findings/Finding.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"

#include <QByteArray>
#include <QLocale>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// A finding in the panel.
struct PanelFinding {
    std::string key; ///< the finding's id
    FindingKind kind = FindingKind::highCPU;
    std::string title;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const PanelFinding&, const PanelFinding&) = default;
};

/// One of the busiest groups in the panel.
struct PanelGroup {
    std::string key; ///< the group's id
    std::string name;
    GroupKind kind = GroupKind::unassigned;
    std::optional<double> percent;       ///< of the whole machine
    std::optional<std::uint64_t> memory; ///< bytes
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const PanelGroup&, const PanelGroup&) = default;
};

} // namespace varnet
