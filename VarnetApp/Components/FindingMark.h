#pragma once

#include "VarnetCore/Findings/Finding.h"

namespace varnet {

/// How a kind of finding looks wherever it is listed: names of an icon and of one of Theme's tones.
struct FindingMark {
    const char* icon;
    const char* tone;
};

constexpr FindingMark markOf(FindingKind kind) noexcept {
    switch (kind) {
    case FindingKind::highCPU:
        return {"flame", "bad"};
    case FindingKind::forgotten:
        return {"moon", "warn"};
    case FindingKind::duplicate:
        return {"duplicate", "info"};
    case FindingKind::restarted:
        break;
    }
    return {"refresh", "warn"};
}

} // namespace varnet
