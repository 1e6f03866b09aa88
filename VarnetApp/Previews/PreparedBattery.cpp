#include "VarnetApp/Previews/PreparedBattery.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace varnet {

namespace {

using enum BatteryState;

constexpr double minute = 60;
constexpr double hour = 3600;
constexpr double day = 86'400;

/// So long in one state, on the way to a charge; nothing is measured of a stretch without a state.
struct Stretch {
    double hours;
    double charge; ///< percent at its end
    std::optional<BatteryState> state;
};

/// What a day looks like, ending in the afternoon.
constexpr std::array<Stretch, 7> ordinaryDay{{
    {2.4, 52, onBattery},
    {3.6, 97, charging},
    {2, 100, charged},
    {3.9, 76, onBattery},
    {4.2, 74, std::nullopt}, // asleep
    {2.1, 48, onBattery},
    {2.95, 100, charging},
}};

struct App {
    const char* id;
    const char* name;
    double score;
    bool partial = false;
};

constexpr std::array<App, 7> hungry{{
    {"app:/usr/share/applications/meridian-browser.desktop", "Meridian Browser", 31.6},
    {"project:/srv/storefront", "storefront", 24.1},
    {"app:/usr/share/applications/quill.desktop", "Quill Editor", 18.8},
    {"app:/usr/share/applications/boardroom.desktop", "Boardroom", 9.2, true},
    {"app:/usr/share/applications/huddle.desktop", "Huddle Chat", 4.4},
    {"app:/usr/share/applications/tempo.desktop", "Tempo Music", 2.1},
    {"process:1790000000:4301", "file-indexer", 0.7},
}};

class Past {
public:
    explicit Past(Date now) : now_(now) {}

    /// A week of such days, each a little different, and the stretches of today up to now.
    void addWeek(std::initializer_list<Stretch> today) {
        double hours = 0;
        for (const Stretch& stretch : today)
            hours += stretch.hours;
        Date at = now_ - hours * hour;
        const Date end = at;
        at = at - 7 * 21.15 * hour;
        charge_ = 66;
        for (int number = 0; number < 7; ++number) {
            for (Stretch stretch : ordinaryDay) {
                if (stretch.state == onBattery) stretch.charge += number * 7 % 11 - 5;
                add(stretch, at);
                at = at + stretch.hours * hour;
            }
        }
        at = end;
        for (const Stretch& stretch : today) {
            add(stretch, at);
            at = at + stretch.hours * hour;
        }
    }

    void addYear(double from, double to) {
        for (int ago = 364; ago >= 0; --ago) {
            const double share = 1 - ago / 364.0;
            const double noise = 0.25 * std::sin(ago / 3.1) + 0.35 * std::sin(ago / 8.3 + 1);
            archive_.health.push_back({now_ - ago * day, from + (to - from) * share + (ago > 0 ? noise : 0),
                                       40 + (364 - ago) * 174 / 364});
        }
    }

    /// A session of this week that ended so many hours ago.
    void addSession(double endedAgo, double hours, double startCharge, double endCharge, double scale) {
        BatterySession session{Uuid::random(),
                               now_ - (endedAgo + hours) * hour,
                               now_ - endedAgo * hour,
                               startCharge,
                               endCharge,
                               hours * hour,
                               {}};
        for (std::size_t i = 0; i < hungry.size(); ++i) {
            const App& app =
                hungry[scale == 1 ? i : (i * 3 + static_cast<std::size_t>(scale * 10)) % hungry.size()];
            session.apps[app.id] = {app.id, app.name, hungry[i].score * scale * session.observedSeconds,
                                    app.partial};
        }
        archive_.sessions.push_back(std::move(session));
    }

    void addSessions() {
        addSession(117, 2.4, 100, 61, 0.8);
        addSession(98, 3.9, 100, 72, 0.5);
        addSession(71, 0.6, 84, 79, 1.1);
        addSession(50, 2.1, 76, 47, 0.9);
        addSession(26.5, 1.4, 93, 80, 1.2);
        addSession(8.5, 2.1, 74, 48, 0.7);
    }

    std::shared_ptr<BatteryDashboard> show(BatteryReading reading) {
        reading.date = now_;
        archive_.prune(now_);
        auto dashboard = std::make_shared<BatteryDashboard>();
        dashboard->reading = reading;
        dashboard->archive.points = std::make_shared<const BatteryHistory::Points>(archive_.points);
        dashboard->archive.health = std::make_shared<const BatteryHistory::Health>(archive_.health);
        for (const BatterySession& session : archive_.sessions)
            dashboard->archive.sessions.push_back(std::make_shared<const BatterySession>(session));
        if (reading.state == onBattery && !archive_.sessions.empty()) {
            dashboard->currentSessionID = archive_.sessions.back().id;
            dashboard->dischargeWatts = reading.watts ? std::optional(-*reading.watts) : std::nullopt;
        }
        return dashboard;
    }

private:
    void add(const Stretch& stretch, Date from) {
        const Uuid segment = Uuid::random();
        const double length = stretch.hours * hour;
        for (double along = 0; stretch.state && along <= length; along += minute) {
            const double value = charge_ + (stretch.charge - charge_) * along / length;
            archive_.points.push_back(
                {from + along, std::clamp(value, 0.0, 100.0), *stretch.state, {}, segment});
        }
        charge_ = stretch.charge;
    }

    const Date now_;
    double charge_ = 66;
    BatteryArchive archive_;
};

/// Everything that a good machine tells.
BatteryReading reading(BatteryState state, double charge, double watts) {
    BatteryReading reading = BatteryReading::missing(BatteryAvailability::available, {});
    reading.state = state;
    reading.charge = charge;
    reading.health = 91;
    reading.condition = BatteryCondition::normal;
    reading.cycles = 214;
    reading.fullCapacity = 4687;
    reading.designCapacity = 5150;
    reading.watts = watts;
    reading.temperature = 31.4;
    return reading;
}

constexpr Stretch rest{2.8, 100, charged};
constexpr Stretch session{2.85, 82, onBattery};

std::shared_ptr<BatteryDashboard> afternoon(Date now) {
    Past past(now);
    past.addWeek({rest, session});
    past.addYear(96.5, 91);
    past.addSessions();
    past.addSession(0, 2.85, 100, 82, 1);
    BatteryReading shown = reading(onBattery, 82, -13);
    shown.minutesRemaining = 204;
    return past.show(shown);
}

} // namespace

PreparedBattery::Dashboard PreparedBattery::onBattery(Date now) {
    return afternoon(now);
}

PreparedBattery::Dashboard PreparedBattery::charging(Date now) {
    Past past(now);
    past.addWeek({rest, {3, 51, BatteryState::onBattery}, {0.3, 64, BatteryState::charging}});
    past.addYear(96.5, 91);
    past.addSessions();
    past.addSession(0.3, 3, 100, 51, 1);
    BatteryReading shown = reading(BatteryState::charging, 64, 38.4);
    shown.minutesToFull = 72;
    shown.adapterWatts = 65;
    return past.show(shown);
}

PreparedBattery::Dashboard PreparedBattery::full(Date now) {
    Past past(now);
    past.addWeek({rest});
    past.addYear(96.5, 91);
    past.addSessions();
    BatteryReading shown = reading(charged, 100, 0);
    shown.adapterWatts = 65;
    return past.show(shown);
}

PreparedBattery::Dashboard PreparedBattery::low(Date now) {
    Past past(now);
    past.addWeek({rest, {5.2, 8, BatteryState::onBattery}});
    past.addYear(84, 74);
    past.addSessions();
    past.addSession(0, 5.2, 100, 8, 1);
    BatteryReading shown = reading(BatteryState::onBattery, 8, -17.2);
    shown.health = 74;
    shown.cycles = 1312;
    shown.fullCapacity = 3811;
    shown.temperature = 44.8;
    shown.condition = BatteryCondition::service;
    shown.minutesRemaining = 31;
    shown.lowPowerMode = true;
    return past.show(shown);
}

PreparedBattery::Dashboard PreparedBattery::sparse(Date now) {
    Past past(now);
    past.addWeek({rest, session});
    past.addSession(0, 2.85, 100, 82, 1);
    BatteryReading shown = BatteryReading::missing(BatteryAvailability::available, now);
    shown.state = BatteryState::onBattery;
    shown.charge = 82;
    return past.show(shown);
}

PreparedBattery::Dashboard PreparedBattery::fresh(Date now) {
    BatteryReading shown = reading(BatteryState::onBattery, 82, -13);
    BatteryTracker tracker;
    shown.date = now;
    return std::make_shared<const BatteryDashboard>(tracker.observe(shown, {}, now));
}

PreparedBattery::Dashboard PreparedBattery::unreadable(Date now) {
    auto dashboard = std::make_shared<BatteryDashboard>(*afternoon(now));
    dashboard->reading = BatteryReading::missing(BatteryAvailability::unavailable, now);
    dashboard->currentSessionID.reset();
    dashboard->dischargeWatts.reset();
    return dashboard;
}

PreparedBattery::Dashboard PreparedBattery::none(Date now) {
    auto dashboard = std::make_shared<BatteryDashboard>();
    dashboard->reading = BatteryReading::missing(BatteryAvailability::absent, now);
    return dashboard;
}

PreparedBattery::Dashboard PreparedBattery::unsaved(Date now) {
    auto dashboard = afternoon(now);
    dashboard->warning = "Battery history could not be saved. Live readings still work.";
    return dashboard;
}

} // namespace varnet
