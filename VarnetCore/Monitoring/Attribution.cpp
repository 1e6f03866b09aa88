#include "VarnetCore/Monitoring/Attribution.h"

namespace varnet {

std::string_view rawValue(Confidence confidence) noexcept {
    switch (confidence) {
    case Confidence::observed:
        return "Observed";
    case Confidence::likely:
        return "Likely";
    case Confidence::unknown:
        return "Unknown";
    }
    return {};
}

std::optional<Confidence> confidenceFromRawValue(std::string_view text) noexcept {
    for (const Confidence confidence : {Confidence::observed, Confidence::likely, Confidence::unknown}) {
        if (text == rawValue(confidence)) return confidence;
    }
    return std::nullopt;
}

} // namespace varnet
