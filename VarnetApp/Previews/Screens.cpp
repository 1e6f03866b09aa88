#include "VarnetApp/Previews/Screens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Previews/ListScreens.h"
#include "VarnetApp/Previews/PreparedMachine.h"

#include <QMetaObject>
#include <QQuickItem>
#include <QStringList>

#include <utility>

namespace varnet {

namespace {

constexpr QSize window{1040, 720};
constexpr QSize smallWindow{760, 560};
constexpr QSize leastWindow{720, 520};
constexpr QSize wideWindow{1400, 900};
constexpr QSize tallSmallWindow{760, 900};

QQuickItem* itemNamed(QQuickItem& root, const QString& name) {
    if (root.objectName() == name) return &root;
    for (QQuickItem* const child : root.childItems())
        if (QQuickItem* const found = itemNamed(*child, name)) return found;
    return nullptr;
}

/// Presses a button of the finished view.
std::function<void(QQuickItem&)> pressing(const QString& name) {
    return [name](QQuickItem& root) {
        if (QQuickItem* const button = itemNamed(root, name)) QMetaObject::invokeMethod(button, "clicked");
    };
}

/// The longest that the hero has to hold.
void sayMuch(QQuickItem& root) {
    QQuickItem* const hero = itemNamed(root, "hero");
    if (!hero) return;
    hero->setProperty("headline", "The agent clocked out. The server didn’t.");
    hero->setProperty("explanation",
                      "Its observed agent exited over 30 minutes ago. The server is still running.");
    hero->setProperty("observations",
                      QStringList{"Meridian Browser takes 9.8% of your Mac’s CPU. Top of the bill.",
                                  "Fastest fan: 2840 RPM. The cooling department’s timesheet.",
                                  "An observed agent exited. Its server is still on the clock."});
    hero->setProperty("expression", "sleepy");
}

} // namespace

std::vector<Picture> screens() {
    using namespace PreparedMachine;
    std::vector<Picture> pictures{
        {"overview", "MainWindow", window, busy},
        {"overview-small", "MainWindow", smallWindow, busy},
        {"overview-findings", "MainWindow", window, manyFindings},
        {"overview-calm", "MainWindow", window, calm},
        {"overview-gathering", "MainWindow", window, gathering},
        {"overview-error", "MainWindow", window, failing},
        {"overview-talking", "MainWindow", window, busy, {}, sayMuch},
        {"overview-talking-small", "MainWindow", smallWindow, busy, {}, sayMuch},
        {"overview-all-findings", "MainWindow", window, manyFindings, {}, pressing("allFindings")},
        {"overview-rules", "MainWindow", window, busy, {}, pressing("findingRules")},
        {"overview-metric-help", "MainWindow", window, busy, {}, pressing("fans")},
        {"overview-least", "MainWindow", leastWindow, manyFindings},
        {"overview-wide", "MainWindow", wideWindow, busy},
        {"overview-tall", "MainWindow", tallSmallWindow, manyFindings},
        {"overview-error-small", "MainWindow", smallWindow, failing},
        {"overview-toast", "MainWindow", window, calm,
         [](VarnetStore& store) { store.setActionMessage("Django has left the building."); }},
        {.name = "onboarding", .view = "MainWindow", .size = window, .data = gathering, .onboarded = false},
        {"components", "Gallery", {1040, 1164}, busy},
        {"panel", "MenuPanel", {340, 0}, busy},
        {"settings", "SettingsView", {640, 0}, busy},
    };
    for (Picture& picture : listScreens())
        pictures.push_back(std::move(picture));
    return pictures;
}

} // namespace varnet
