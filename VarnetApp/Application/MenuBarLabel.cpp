#include "VarnetApp/Application/MenuBarLabel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Application/TrayFace.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/Figures.h"

#include <array>
#include <cstring>

namespace varnet {

namespace {

/// Pixels of a side: the sizes that trays ask for, at one and two pixels a logical one.
constexpr std::array<int, 5> traySizes{16, 22, 24, 32, 48};

enum Entry { overview = 1, settings, updates, feedback, separator, quit };

platform::TrayImage trayImage(const QImage& drawn) {
    const QImage image = drawn.convertToFormat(QImage::Format_ARGB32);
    platform::TrayImage result{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        result.pixels.insert(result.pixels.end(), row, row + image.width());
    }
    return result;
}

} // namespace

MenuBarLabel::MenuBarLabel(platform::TrayItem& item, VarnetStore& store, DockFlame& flame,
                           AppLocalization& localization, Actions actions, QObject* parent)
    : QObject(parent), item_(item), store_(store), flame_(flame), localization_(localization),
      actions_(std::move(actions)) {
    connect(&flame_, &DockFlame::faceChanged, this, &MenuBarLabel::renderFace);
    connect(&store_, &VarnetStore::menuChanged, this, &MenuBarLabel::renderFigures);
    connect(&localization_, &AppLocalization::languageChanged, this, [this] {
        renderFigures();
        renderMenu();
    });
}

void MenuBarLabel::show() {
    renderFace();
    renderFigures();
    renderMenu();
    item_.listen({
        .activated =
            [this](int x, int y) {
                // Some hosts do not say where, or say it is the corner.
                const bool known = x > 0 || y > 0;
                actions_.openPanel(known ? std::optional(QPoint(x, y)) : std::nullopt);
            },
        .menuChosen =
            [this](int id) {
                if (id == overview) actions_.openMain();
                if (id == settings) actions_.openSettings();
                if (id == updates) actions_.checkForUpdates();
                if (id == feedback) actions_.sendFeedback();
                if (id == quit) actions_.quit();
            },
        .activationToken = actions_.activationToken,
        .hostedChanged = actions_.hostedChanged,
    });
}

QString MenuBarLabel::accessibleName() const {
    return QStringLiteral("Varnet? %1 findings").arg(store_.menuFindingCount());
}

const std::vector<platform::TrayImage>& MenuBarLabel::imagesOf(FlameExpression expression) {
    auto held = images_.find(expression);
    if (held == images_.end()) {
        std::vector<platform::TrayImage> images;
        images.reserve(traySizes.size());
        for (const int size : traySizes)
            images.push_back(trayImage(trayFace(expression, size, updateAvailable_)));
        held = images_.emplace(expression, std::move(images)).first;
    }
    return held->second;
}

void MenuBarLabel::setUpdateAvailable(bool available) {
    if (updateAvailable_ == available) return;
    updateAvailable_ = available;
    images_.clear();
    renderFace();
}

void MenuBarLabel::setCanCheckForUpdates(bool possible) {
    if (canCheckForUpdates_ == possible) return;
    canCheckForUpdates_ = possible;
    renderMenu();
}

void MenuBarLabel::renderFace() {
    item_.setIcon(imagesOf(flame_.trayExpression()));
}

void MenuBarLabel::renderFigures() {
    const QString name = localization_.text(accessibleName());
    const bool figure = store_.showMenuCPU() && store_.menuCPU();
    const Figures figures(localization_.locale());
    const QString cpu = figure ? figures.wholePercent(store_.menuCPU()) : QString();
    item_.setLabel(cpu.toStdString(), figure ? figures.wholePercent(100.0).toStdString() : std::string());
    item_.setTitle((figure ? "Varnet? " + cpu : QStringLiteral("Varnet?")).toStdString());
    const QString line = figure ? localization_.text("Whole Mac CPU") + " " + cpu : QString();
    item_.setToolTip(name.toStdString(), line.toStdString());
    item_.setAccessibleDescription(name.toStdString());
}

void MenuBarLabel::renderMenu() {
    const auto text = [this](const char* english) {
        return localization_.text(QString::fromUtf8(english)).toStdString();
    };
    item_.setMenu({
        {.id = overview, .label = text("Open overview")},
        {.id = settings, .label = text("Settings")},
        {.id = updates, .label = text("Check for Updates"), .enabled = canCheckForUpdates_},
        {.id = feedback, .label = text("Send feedback")},
        {.id = separator, .label = {}, .separator = true},
        {.id = quit, .label = text("Quit Varnet")},
    });
}

} // namespace varnet
