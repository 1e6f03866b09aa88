#pragma once

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"

#include <memory>
#include <vector>

namespace varnet {

/// The running applications that a user would call by name. Main thread only.
class ApplicationCatalog {
public:
    virtual ~ApplicationCatalog() = default;

    /// All that run now, in no fixed order, each pid once. Cheap enough for every pass: a full listing is
    /// made at most once a minute; between two, launches and exits come from the platform's events, which
    /// need a running event loop. Without one the list is up to a minute old.
    virtual std::vector<ApplicationDescriptor> snapshot() = 0;
};

/// The catalogue of this machine and user. Where there is to be an event loop, the application object must
/// exist before the first snapshot.
/// @param clock outlives the catalogue
std::unique_ptr<ApplicationCatalog> makeApplicationCatalog(const Clock& clock);

} // namespace varnet
