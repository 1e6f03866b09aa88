#include "VarnetApp/Previews/Previews.h"

#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Previews/HallScreens.h"
#include "VarnetApp/Previews/PreparedCollection.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/Screens.h"
#include "VarnetApp/Previews/WholeDiskScreens.h"
#include "VarnetApp/ShareCards/ShareCard.h"
#include "VarnetApp/ShareCards/WeeklyCard.h"
#include "VarnetCore/Flame/RoastEngine.h"

#include <QTemporaryDir>

#include <cstdio>
#include <utility>
#include <vector>

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

std::vector<Picture> screensBeginning(const QString& name) {
    std::vector<Picture> pictures;
    for (Picture& picture : screens())
        if (picture.name.startsWith(name)) pictures.push_back(std::move(picture));
    return pictures;
}

bool writeInAllLooks(const std::vector<Picture>& pictures, const std::filesystem::path& folder,
                     const QString& language) {
    bool complete = true;
    for (const Picture& picture : pictures) {
        for (const Look look : {Look::dark, Look::light}) {
            for (const int scale : {1, 2}) {
                const QString file = picture.name + (look == Look::dark ? "-dark" : "-light") +
                                     (scale == 2 ? "@2x.png" : ".png");
                complete =
                    write(paint(picture, look, scale, language), folder / file.toStdString()) && complete;
            }
        }
    }
    return complete;
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
    return makeFolder(folder) && writeInAllLooks(screensBeginning(only), folder, language) ? 0 : 1;
}

int Previews::renderCloud(const std::filesystem::path& folder, const QString& language) {
    if (!makeFolder(folder)) return 1;
    bool complete = true;
    for (const char* const scope : {"cloud", "feedback"})
        complete = writeInAllLooks(screensBeginning(scope), folder, language) && complete;
    return complete ? 0 : 1;
}

int Previews::renderStorage(const std::filesystem::path& folder, const QString& language) {
    if (!makeFolder(folder)) return 1;
    bool complete = true;
    for (const char* const scope : {"storage", "disk"})
        complete = writeInAllLooks(screensBeginning(scope), folder, language) && complete;
    const QTemporaryDir tree;
    std::vector<Picture> measured;
    if (tree.isValid()) measured = measuredDiskScreens(tree.path().toStdString());
    if (measured.empty()) std::fputs("varnet: no tree of files could be measured\n", stderr);
    return writeInAllLooks(measured, folder, language) && complete && !measured.empty() ? 0 : 1;
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
