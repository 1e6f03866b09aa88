#include "VarnetApp/Previews/UpdateScreens.h"

#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/Previews/PreparedUpdates.h"

#include <QQuickItem>

namespace varnet {

namespace {

/// Where the settings say it.
void scrollDown(QQuickItem& root) {
    if (auto* const page = root.findChild<QQuickItem*>("page"))
        page->setProperty("contentY", page->property("contentHeight").toDouble() - page->height());
}

Picture settings(const char* name, std::function<void(PreparedUpdates&)> updates, QSize size = {640, 420}) {
    Picture picture{name, "SettingsView", size, PreparedMachine::busy, {}, scrollDown};
    picture.updates = std::move(updates);
    return picture;
}

} // namespace

std::vector<Picture> updateScreens() {
    std::vector<Picture> pictures{
        settings("settings-updates-private", {}),
        settings("settings-updates-started", [](PreparedUpdates&) {}),
        settings("settings-updates-current", &PreparedUpdates::nothingNew),
        settings("settings-updates-found", &PreparedUpdates::found),
        settings("settings-updates-downloading", &PreparedUpdates::downloading),
        settings("settings-updates-ready", &PreparedUpdates::ready),
        settings("settings-updates-aborted", &PreparedUpdates::aborted),
        settings("settings-updates-small", &PreparedUpdates::downloading, {480, 400}),
    };
    pictures.push_back({.name = "panel-update",
                        .view = "MenuPanel",
                        .size = {340, 0},
                        .data = PreparedMachine::manyFindings,
                        .updates = &PreparedUpdates::found});
    return pictures;
}

} // namespace varnet
