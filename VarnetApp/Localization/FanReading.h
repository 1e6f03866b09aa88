#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Sensors/FanSnapshot.h"

#include <QString>

#include <optional>

namespace varnet {

/// The fans in words: a figure and the line under it.
struct FanReading {
    QString figure; ///< "2,840 RPM", "Fanless", or "—"
    QString detail;
    std::optional<double> share; ///< of the fastest fan's top speed, 0 to 1

    friend bool operator==(const FanReading&, const FanReading&) = default;
};

FanReading fanReading(const FanSnapshot& fans, const Figures& figures);

} // namespace varnet
