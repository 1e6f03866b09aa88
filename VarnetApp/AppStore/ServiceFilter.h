#pragma once

#include "VarnetApp/AppStore/Page.h"
#include "VarnetCore/Monitoring/Service.h"

#include <QLocale>
#include <QString>

#include <span>
#include <vector>

namespace varnet {

/// Which servers the list shows, and in which order.
struct ServiceFilter {
    QString
        search; ///< sought in name, project and ports (":3000"), without regard to case; empty: everything
    SortOrder sort = SortOrder::cpu;
    QLocale locale{QLocale::English, QLocale::UnitedStates}; ///< whose alphabet orders names

    /// Figures descending with the unknown ones last, names ascending; what is equal by id.
    /// @return pointers into `services`
    std::vector<const Service*> apply(std::span<const Service> services) const;

private:
    bool keeps(const Service& service) const;
};

} // namespace varnet
