#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Findings/Finding.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"
#include "VarnetCore/Monitoring/Service.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// A service whose every process was seen to exit when the user stopped it.
struct StoppedService {
    std::string name;                   ///< Service::name
    std::optional<std::string> project; ///< root of the project; empty: none
    std::optional<std::string> cwd;     ///< empty: not known
    ProcessIdentity identity;           ///< its root
    Date date;                          ///< when it was stopped

    friend bool operator==(const StoppedService&, const StoppedService&) = default;
};

/// Notices that something a user stopped came back: some parent tool starts it again.
namespace RestartDetection {

/// Seconds after a stop during which a new instance counts as its restart.
constexpr double memory = 120;

/// Adds a service that was just stopped, unless its identity is held already.
void remember(const Service& service, Date now, std::vector<StoppedService>& stopped);

/// One look at a published pass. Forgets stops that are too long ago, then rebuilds the restarted findings:
/// those of the look before go, and one for every stop whose like has newly started is put in front, the
/// latest stop's first.
/// @param ignored ids of findings set aside by the user: they are left out
/// @param findings the pass's; others than restarted ones stay as they are
void update(std::vector<StoppedService>& stopped, std::span<const Service> services,
            const std::map<std::string, Date>& ignored, Date now, std::vector<Finding>& findings);

} // namespace RestartDetection
} // namespace varnet
