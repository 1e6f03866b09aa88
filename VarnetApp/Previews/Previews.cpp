#include "VarnetApp/Previews/Previews.h"

#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Previews/HallScreens.h"
#include "VarnetApp/Previews/PreparedCollection.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/Screens.h"
#include "VarnetApp/ShareCards/ShareCard.h"
#include "VarnetApp/ShareCards/WeeklyCard.h"
#include "VarnetCore/Flame/RoastEngine.h"

#include <cstdio>

namespace varnet {

namespace {

bool makeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        std::fprintf(stderr, "varnet: %s cannot be made: %s\n", folder.c_str(), error.message().c_str());
    return !error;
}

bool write(const QImage& image, const std::filesystem::path& path) {
    const bool written = !image.isNull() && image.save(QString::fromStdString(path.string()), "PNG");
    if (!written) std::fprintf(stderr, "varnet: %s was not written\n", path.c_str());
    return written;
}

bool writeScreen(const Picture& picture, const std::filesystem::path& folder, const QString& language) {
    return write(paint(picture, Look::dark, 1, language), folder / (picture.name.toStdString() + ".png"));
}

QImage weeklyCard(const AppLocalization& localization) {
    const FlameArchive archive = PreparedCollection::started();
    const FlameWeek week = FlameWeek::containing(archive, PreparedMachine::now());
    return WeeklyCard(week, archive.calendar(), localization, true).image(localization);
}

QImage shareCard(const AppLocalization& localization) {
    const auto snapshot = PreparedMachine::busy();
    RoastEngine engine;
    engine.setChoices({{"deck-v2:forgotten:seed", 20}});
    return ShareCard::image({*snapshot, engine.make(*snapshot, Rotation::allowed), ProjectNames::included,
                             Figures(localization.locale())},
                            localization);
}

} // namespace

int Previews::render(const std::filesystem::path& folder, const QString& language, const QString& only) {
    if (!makeFolder(folder)) return 1;
    bool complete = true;
    for (const Picture& picture : screens()) {
        if (!picture.name.startsWith(only)) continue;
        for (const Look look : {Look::dark, Look::light}) {
            for (const int scale : {1, 2}) {
                const QString file = picture.name + (look == Look::dark ? "-dark" : "-light") +
                                     (scale == 2 ? "@2x.png" : ".png");
                complete =
                    write(paint(picture, look, scale, language), folder / file.toStdString()) && complete;
            }
        }
    }
    return complete ? 0 : 1;
}

int Previews::renderCollection(const std::filesystem::path& folder, const QString& language) {
    if (!makeFolder(folder)) return 1;
    const AppLocalization localization(nullptr, language);
    bool complete = writeScreen(smallestHall(), folder, language);
    complete = writeScreen(earnedBadges(), folder, language) && complete;
    complete = write(weeklyCard(localization), folder / "weekly-roast.png") && complete;
    return complete ? 0 : 1;
}

int Previews::renderReports(const std::filesystem::path& folder, const QString& language) {
    if (!makeFolder(folder)) return 1;
    const AppLocalization localization(nullptr, language);
    bool complete = writeScreen(reportSheet(), folder, language);
    complete = write(shareCard(localization), folder / ShareCard::suggestedName) && complete;
    complete = write(weeklyCard(localization), folder / WeeklyCard::suggestedName) && complete;
    return complete ? 0 : 1;
}

} // namespace varnet
