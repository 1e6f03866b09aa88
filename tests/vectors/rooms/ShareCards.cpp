#include "VarnetApp/ShareCards/ShareCardSnapshot.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Roast readRoast(const Json& json) {
    Roast roast;
    roast.id = readText(json, "id");
    roast.headline = readText(json, "headline");
    roast.explanation = readText(json, "explanation");
    roast.observations = readTexts(json, "observations");
    for (const MascotMood mood : {MascotMood::calm, MascotMood::busy, MascotMood::warm, MascotMood::takeoff,
                                  MascotMood::unknown, MascotMood::relieved})
        if (rawValue(mood) == readText(json, "mood")) roast.mood = mood;
    roast.topic = readText(json, "topic");
    roast.characterTopic = readText(json, "characterTopic");
    return roast;
}

Json written(const Roast& roast) {
    return {{"id", roast.id},
            {"headline", roast.headline},
            {"explanation", roast.explanation},
            {"observations", roast.observations},
            {"mood", rawValue(roast.mood)},
            {"topic", roast.topic},
            {"characterTopic", roast.characterTopic}};
}

/// Fields that are formatted after the platform's habit are left out.
std::optional<Difference> checkCard(const Json& vector) {
    const Json& input = vector.at("input");
    const ShareCardSnapshot card(readSnapshot(at(input, "snapshot")), readRoast(at(input, "roast")),
                                 readFlag(input, "includeProjectNames") ? ProjectNames::included
                                                                        : ProjectNames::left,
                                 Figures(QLocale("en_US")));
    Json got{{"date", card.date.seconds},        {"roast", written(card.roast)},
             {"cpu", card.cpu.toStdString()},    {"memory", card.memory.toStdString()},
             {"fans", card.fans.toStdString()},  {"fanDetail", card.fanDetail.toStdString()},
             {"serverCount", card.serverCount},  {"toolCount", card.toolCount},
             {"projectNames", card.projectNames}};
    for (const std::string& field : readTexts(vector, "unchecked"))
        got.erase(field);
    return firstDifference(vector.at("expect"), got, {});
}

const Room room{{"ShareCardSnapshot", checkCard}};

} // namespace
} // namespace varnet::vectors
