#include "VarnetApp/Previews/Previews.h"

#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Previews/HallScreens.h"
#include "VarnetApp/Previews/MarketingPictures.h"
#include "VarnetApp/Previews/PreparedCollection.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/Screens.h"
#include "VarnetApp/Previews/WholeDiskScreens.h"
#include "VarnetApp/ShareCards/ShareCard.h"
#include "VarnetApp/ShareCards/WeeklyCard.h"
#include "VarnetCore/Flame/RoastEngine.h"

#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
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

/// The screens in which every kind of text stands: the pages, also in the least window, where words are cut
/// off first, the windows beside them, and the sheets.
constexpr std::array spokenScreens{
    "overview",
    "overview-findings",
    "overview-calm",
    "overview-gathering",
    "overview-least",
    "overview-rules",
    "overview-error",
    "sources",
    "apps",
    "apps-selected",
    "apps-selected-small",
    "apps-least",
    "projects",
    "projects-selected",
    "projects-empty",
    "servers",
    "servers-least",
    "servers-empty-least",
    "detail-project",
    "detail-server",
    "detail-server-least",
    "detail-system",
    "storage",
    "storage-start",
    "storage-list",
    "storage-skipped",
    "storage-detail-worktree",
    "storage-review",
    "storage-least",
    "storage-least-review",
    "disk-map",
    "disk-list",
    "disk-access-sheet",
    "disk-why",
    "disk-capacity",
    "disk-least",
    "battery",
    "battery-week",
    "battery-least",
    "battery-fresh",
    "hall",
    "hall-lower",
    "hall-fine-print",
    "hall-least",
    "hall-fresh",
    "hall-toast",
    "weekly-sheet",
    "report-sheet",
    "stop-before",
    "stop-survivors",
    "stop-before-least",
    "batch-before",
    "batch-survivors",
    "batch-before-least",
    "quit",
    "quit-forced",
    "panel",
    "panel-update",
    "panel-gathering",
    "settings",
    "settings-small",
    "settings-login",
    "settings-clear",
    "settings-reset",
    "onboarding",
    "onboarding-small",
};

/// The codes of the languages to paint in.
std::vector<QString> languagesFor(const QString& wanted) {
    if (!wanted.isEmpty()) return {wanted};
    std::vector<QString> codes;
    codes.reserve(std::size(appLanguages));
    for (const AppLanguage language : appLanguages)
        codes.push_back(QString::fromUtf8(rawValue(language)));
    return codes;
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

int Previews::renderLocalization(const std::filesystem::path& folder, const QString& language,
                                 const QString& only) {
    if (!makeFolder(folder)) return 1;
    const std::vector<QString> languages = languagesFor(language);
    std::set<QString> missing;
    for (const char* const name : spokenScreens)
        if (QString(name).startsWith(only)) missing.insert(name);
    bool complete = true;
    for (const Picture& picture : screensBeginning(only)) {
        if (missing.erase(picture.name) == 0) continue;
        for (const QString& code : languages)
            complete = write(paint(picture, Look::dark, 1, code),
                             folder / (picture.name + '-' + code + ".png").toStdString()) &&
                       complete;
    }
    for (const QString& name : missing)
        std::fprintf(stderr, "varnet: there is no screen called %s\n", qPrintable(name));
    return complete && missing.empty() ? 0 : 1;
}

int Previews::renderMarketing(const std::filesystem::path& folder, const QString& language) {
    if (!makeFolder(folder)) return 1;
    const AppLocalization localization(nullptr, language);
    bool complete = true;
    for (const MarketingPicture& picture : marketingPictures()) {
        const std::vector<Picture> screen = screensBeginning(picture.screen);
        const auto shown = std::ranges::find(screen, picture.screen, &Picture::name);
        const QImage window =
            shown == screen.end() ? QImage() : paint(*shown, Look::dark, marketingScale, language);
        complete = write(paintMarketing(picture, window, localization),
                         folder / (picture.name.toStdString() + ".png")) &&
                   complete;
    }
    return complete ? 0 : 1;
}

} // namespace varnet
