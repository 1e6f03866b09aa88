#include "VarnetApp/Previews/Screens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Previews/BatteryScreens.h"
#include "VarnetApp/Previews/CloudScreens.h"
#include "VarnetApp/Previews/HallScreens.h"
#include "VarnetApp/Previews/ListScreens.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/StorageScreens.h"
#include "VarnetApp/Previews/UpdateScreens.h"
#include "VarnetApp/Previews/WholeDiskScreens.h"

#include <QMetaObject>
#include <QQuickItem>
#include <QStringList>

#include <map>
#include <string>
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
constexpr QSize panel{340, 0};

HistoryRecord action(double ago, const char* title, const char* detail) {
    return {Uuid::random(), PreparedMachine::now() - ago, title, detail};
}

void withHistory(VarnetStore& store) {
    const Date now = PreparedMachine::now();
    store.setPreviewHistory(
        {{"cpu:project:/srv/storefront:7", now - 86'400}, {"duplicate:/srv/storefront:vite", now - 5'400}},
        {action(2'400, "Django stopped", "4 of 4 reviewed processes exited."),
         action(90'000, "Vite stopped", "1 of 1 reviewed process exited.")});
}

void withLongHistory(VarnetStore& store) {
    const Date now = PreparedMachine::now();
    std::map<std::string, Date> ignored;
    std::vector<HistoryRecord> actions;
    for (int i = 0; i < 12; ++i) {
        const double ago = 3'000 + i * 40'000.0;
        ignored[(i % 3 == 0   ? "cpu:"
                 : i % 3 == 1 ? "duplicate:"
                              : "forgotten:") +
                std::to_string(i)] = now - ago / 2;
        actions.push_back(action(ago, i % 2 == 0 ? "Django stopped" : "a-rather-long-worktree-name stopped",
                                 "3 of 4 reviewed processes exited. One would not leave; it can be asked "
                                 "again from the list of servers."));
    }
    store.setPreviewHistory(std::move(ignored), std::move(actions));
}

void withMessage(VarnetStore& store) {
    withHistory(store);
    store.setSettingsMessage("Folder access saved. Project metadata will be refreshed on the next sample.");
}

std::function<void(QQuickItem&)> click(const char* name) {
    return [name](QQuickItem& root) {
        if (QObject* const found = root.findChild<QObject*>(name))
            QMetaObject::invokeMethod(found, "clicked");
    };
}

std::function<void(QQuickItem&)> open(const char* name) {
    return [name](QQuickItem& root) {
        if (QObject* const found = root.findChild<QObject*>(name)) QMetaObject::invokeMethod(found, "open");
    };
}

void wantApproval(QQuickItem& root) {
    if (QObject* const found = root.findChild<QObject*>("loginFeedback"))
        found->setProperty("needsApproval", true);
}

std::shared_ptr<const MonitorSnapshot> tooManyFindings() {
    auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::manyFindings());
    const std::vector<Finding> findings = snapshot->findings;
    for (int round = 0; round < 4; ++round) {
        for (Finding finding : findings) {
            finding.id += std::to_string(round);
            snapshot->findings.push_back(std::move(finding));
        }
    }
    return snapshot;
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
        {"report", "MainWindow", window, busy, [](VarnetStore& store) { store.presentRoast(); }},
        {.name = "onboarding", .view = "MainWindow", .size = window, .data = gathering, .onboarded = false},
        {.name = "onboarding-small",
         .view = "MainWindow",
         .size = {720, 520},
         .data = gathering,
         .onboarded = false},
        {"components", "Gallery", {1040, 1164}, busy},
        {"panel", "MenuPanel", panel, busy},
        {"panel-calm", "MenuPanel", panel, calm},
        {"panel-gathering", "MenuPanel", panel, gathering},
        {"panel-error", "MenuPanel", panel, failing},
        {"panel-tall", "MenuPanel", panel, tooManyFindings},
        {"settings", "SettingsView", {640, 0}, busy, withHistory},
        {"settings-window", "SettingsView", {640, 720}, busy, withHistory},
        {"settings-small", "SettingsView", {480, 400}, busy, withHistory},
        {"settings-empty", "SettingsView", {640, 0}, gathering},
        {"settings-lists", "SettingsView", {640, 0}, busy, withLongHistory, click("recentActions")},
        {"settings-login", "SettingsView", {640, 720}, busy, withMessage, wantApproval},
        {"settings-clear", "SettingsView", {640, 720}, busy, withHistory, open("confirmClear")},
        {"settings-reset", "SettingsView", {640, 720}, busy, withHistory, open("confirmCollectionReset")},
    };
    for (auto* const room : {listScreens, batteryScreens, cloudScreens, hallScreens, storageScreens,
                             updateScreens, wholeDiskScreens})
        for (Picture& picture : room())
            pictures.push_back(std::move(picture));
    return pictures;
}

} // namespace varnet
