#include "VarnetApp/ShareCards/ShareCardSnapshot.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RoastJson.h"

namespace varnet::vectors {
namespace {

/// Fields that are formatted after the platform's habit are left out.
std::optional<Difference> checkCard(const Json& vector) {
    const Json& input = vector.at("input");
    const ShareCardSnapshot card(read<MonitorSnapshot>(input, "snapshot"), read<Roast>(input, "roast"),
                                 readFlag(input, "includeProjectNames") ? ProjectNames::included
                                                                        : ProjectNames::left,
                                 Figures(QLocale("en_US")));
    Json got{{"date", card.date.seconds},        {"roast", written(card.roast)},
             {"cpu", card.cpu.toStdString()},    {"memory", card.memory.toStdString()},
             {"fans", card.fans.toStdString()},  {"fanDetail", card.fanDetail.toStdString()},
             {"serverCount", card.serverCount},  {"toolCount", card.toolCount},
             {"projectNames", card.projectNames}};
    for (const std::string& field : read<std::vector<std::string>>(vector, "unchecked"))
        got.erase(field);
    return firstDifference(vector.at("expect"), got, {});
}

const Room room{{"ShareCardSnapshot", checkCard}};

} // namespace
} // namespace varnet::vectors
