#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"

#include <memory>
#include <vector>

namespace varnet {

class VarnetStore;

/// Drives the measurements: one pass a second plus the time that the pass takes, from the main thread to the
/// engine's queue and back. Ends with the store.
class SamplingLoop {
public:
    /// Seconds between two passes, and between two looks at the running applications.
    static constexpr double pause = 1;
    static constexpr double catalogInterval = 2;

    explicit SamplingLoop(VarnetStore& store);

    /// Makes the first pass.
    void start();

private:
    void readCatalog(Date now);
    void pass();
    void received();

    VarnetStore& store_;
    std::vector<ApplicationDescriptor> applications_;
    Date catalogRead_;
};

} // namespace varnet
