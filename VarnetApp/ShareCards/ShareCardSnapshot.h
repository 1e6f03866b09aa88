#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Flame/Roast.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace varnet {

enum class ProjectNames { left, included };

/// A moment of the machine, frozen to be shown to others: no paths, commands or users in it, and projects'
/// names only when the user asks for them.
struct ShareCardSnapshot {
    Date date;
    Roast roast;
    QString cpu;    ///< "9.9%" below 10, "46%" from there on, or "—"
    QString memory; ///< of all processes, or "—"
    QString fans;   ///< "2,840 RPM", "Fanless", or "—"
    QString fanDetail;
    std::size_t serverCount = 0;
    std::size_t toolCount = 0;
    std::vector<std::string> projectNames; ///< ascending, each once

    ShareCardSnapshot() = default;
    ShareCardSnapshot(const MonitorSnapshot& snapshot, Roast line, ProjectNames names,
                      const Figures& figures);
};

} // namespace varnet
