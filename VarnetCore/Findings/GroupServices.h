#pragma once

#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Service.h"

namespace varnet {

/// Whether a service works in the project that a group is of; both in none counts as the same.
inline bool worksIn(const Service& service, const ApplicationGroup& group) noexcept {
    const auto& project = service.project();
    return project && group.project ? project->root == group.project->root : !project && !group.project;
}

} // namespace varnet
