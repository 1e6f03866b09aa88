#pragma once

#include "VarnetApp/AppStore/Page.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"

#include <QLocale>
#include <QString>

#include <span>
#include <vector>

namespace varnet {

/// Which groups a list shows, and in which order.
struct GroupFilter {
    /// The agent filter that keeps every group.
    static constexpr const char* allAgents = "All agents";

    Page page = Page::overview;
    QString search; ///< sought in name and subtitle, without regard to case; empty: everything
    QString agent = QLatin1String(allAgents);
    SortOrder sort = SortOrder::cpu;
    QLocale locale{QLocale::English, QLocale::UnitedStates}; ///< whose alphabet orders names

    /// @param groups in the snapshot's order, which is that of CPU
    /// @return pointers into `groups`
    std::vector<const ApplicationGroup*> apply(std::span<const ApplicationGroup> groups) const;

private:
    bool keeps(const ApplicationGroup& group) const;
};

} // namespace varnet
