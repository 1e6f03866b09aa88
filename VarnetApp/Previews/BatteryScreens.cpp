#include "VarnetApp/Previews/BatteryScreens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Previews/PreparedBattery.h"
#include "VarnetApp/Previews/PreparedMachine.h"

#include <QQuickItem>

#include <utility>

namespace varnet {

namespace {

constexpr QSize window{1040, 720};
constexpr QSize leastWindow{720, 520};

using Data = std::function<std::shared_ptr<const MonitorSnapshot>()>;
using Touch = std::function<void(QQuickItem&)>;

Data with(PreparedBattery::Dashboard (*battery)(Date)) {
    return [battery] {
        auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::busy());
        snapshot->battery = battery ? battery(PreparedMachine::now()) : nullptr;
        return snapshot;
    };
}

QQuickItem* itemNamed(QQuickItem& root, const QString& name) {
    if (root.objectName() == name) return &root;
    for (QQuickItem* const child : root.childItems())
        if (QQuickItem* const found = itemNamed(*child, name)) return found;
    return nullptr;
}

void showWeek(QQuickItem& root) {
    if (QQuickItem* const span = itemNamed(root, "chargeSpan"))
        QMetaObject::invokeMethod(span, "chosen", Q_ARG(int, 1));
}

/// A point of the charge curve, told by its share of the line.
Touch pointAt(double share) {
    return [share](QQuickItem& root) {
        QQuickItem* const chart = itemNamed(root, "chargeChart");
        if (!chart) return;
        const auto count = chart->property("points").value<QList<QPointF>>().size();
        chart->setProperty("currentIndex", static_cast<int>(share * static_cast<double>(count)));
    };
}

void showAllSessions(QQuickItem& root) {
    if (QQuickItem* const link = itemNamed(root, "allSessions")) QMetaObject::invokeMethod(link, "clicked");
}

} // namespace

std::vector<Picture> batteryScreens() {
    using namespace PreparedBattery;
    const auto onPage = [](VarnetStore& store) { store.setPage(Page::battery); };
    const auto page = [&](const QString& name, Data data, Touch touch = {}, QSize size = window) {
        return Picture{name, "MainWindow", size, std::move(data), onPage, std::move(touch)};
    };
    std::vector<Picture> pictures;
    const std::pair<const char*, PreparedBattery::Dashboard (*)(Date)> states[] = {
        {"battery", onBattery},         {"battery-charging", charging},     {"battery-full", full},
        {"battery-low", low},           {"battery-sparse", sparse},         {"battery-fresh", fresh},
        {"battery-gathering", nullptr}, {"battery-unreadable", unreadable}, {"battery-none", none},
        {"battery-warning", unsaved},
    };
    for (const auto& [name, state] : states) {
        pictures.push_back(page(name, with(state)));
        pictures.push_back(page(QString(name) + "-least", with(state), {}, leastWindow));
    }
    pictures.push_back(page("battery-hover", with(onBattery), pointAt(0.62)));
    pictures.push_back(page("battery-week", with(onBattery), showWeek));
    pictures.push_back(page("battery-sessions", with(onBattery), showAllSessions, {1040, 1100}));
    pictures.push_back(page("battery-tall", with(low), {}, {720, 1200}));
    pictures.push_back(page("battery-wide", with(charging), {}, {1400, 900}));
    return pictures;
}

} // namespace varnet
