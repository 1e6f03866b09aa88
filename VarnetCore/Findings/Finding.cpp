#include "VarnetCore/Findings/Finding.h"

namespace varnet {

std::string_view rawValue(FindingKind kind) noexcept {
    switch (kind) {
    case FindingKind::highCPU:
        return "highCPU";
    case FindingKind::forgotten:
        return "forgotten";
    case FindingKind::duplicate:
        return "duplicate";
    case FindingKind::restarted:
        return "restarted";
    }
    return {};
}

} // namespace varnet
