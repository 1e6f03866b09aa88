#include "VarnetApp/Previews/Screens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Previews/PreparedMachine.h"

namespace varnet {

namespace {

constexpr QSize window{1040, 720};
constexpr QSize smallWindow{760, 560};

std::function<void(VarnetStore&)> onPage(Page page) {
    return [page](VarnetStore& store) { store.setPage(page); };
}

} // namespace

std::vector<Picture> screens() {
    using namespace PreparedMachine;
    return {
        {"overview", "MainWindow", window, busy},
        {"overview-small", "MainWindow", smallWindow, busy},
        {"overview-findings", "MainWindow", window, manyFindings},
        {"overview-calm", "MainWindow", window, calm},
        {"overview-gathering", "MainWindow", window, gathering},
        {"overview-error", "MainWindow", window, failing},
        {"sources", "MainWindow", window, busy, onPage(Page::sources)},
        {"apps", "MainWindow", window, busy, onPage(Page::apps)},
        {"projects", "MainWindow", window, busy, onPage(Page::projects)},
        {"servers", "MainWindow", window, busy, onPage(Page::servers)},
        {.name = "onboarding", .view = "MainWindow", .size = window, .data = gathering, .onboarded = false},
        {"components", "Gallery", {1040, 1164}, busy},
        {"panel", "MenuPanel", {340, 0}, busy},
        {"settings", "SettingsView", {640, 0}, busy},
    };
}

} // namespace varnet
