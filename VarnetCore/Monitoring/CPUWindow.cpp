#include "VarnetCore/Monitoring/CPUWindow.h"

#include <algorithm>
#include <cmath>

namespace varnet {

std::optional<double> CPUWindow::record(double value, double duration, Date endingAt) {
    if (!std::isfinite(value) || value < 0 || !(duration > 0)) return std::nullopt;
    samples_.push_back({endingAt, duration, value});
    std::erase_if(samples_, [endingAt](const Sample& sample) { return endingAt - sample.end >= length; });
    return average(endingAt);
}

std::optional<double> CPUWindow::average(Date at) const noexcept {
    double weighted = 0;
    double weights = 0;
    for (const Sample& sample : samples_) {
        const double age = at - sample.end;
        const double weight = std::max(0.0, std::min(length - age, sample.duration));
        weighted += sample.value * weight;
        weights += weight;
    }
    if (!(weights > 0)) return std::nullopt;
    return weighted / weights;
}

} // namespace varnet
