#pragma once

#include "VarnetApp/Updates/ReleaseHost.h"

namespace varnet {
struct RunningCopy;
}

namespace varnet::ReleaseFeedDiagnostic {

/// Asks the feed of releases how the newest one stands to this copy, and prints the answer or why there is
/// none. The application object must exist; its events are served meanwhile.
/// @return 0 when there is an answer
int run(const ReleaseHost& host, const RunningCopy& copy);

} // namespace varnet::ReleaseFeedDiagnostic
