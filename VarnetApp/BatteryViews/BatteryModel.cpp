#include "VarnetApp/BatteryViews/BatteryModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetApp/MainViews/OverviewTexts.h"
#include "VarnetCore/Base/Clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnet {

namespace {

using BatteryTexts::Presence;

constexpr double low = 20; ///< percent of charge
constexpr double veryLow = 10;

QString toneOf(const BatteryReading* reading) {
    const bool drains = reading && reading->charge && reading->state == BatteryState::onBattery;
    if (drains && *reading->charge <= veryLow) return "bad";
    if (drains && *reading->charge <= low) return "warn";
    return "good";
}

/// The one that runs, else the latest; null when there is none.
const BatterySession* shownSession(const BatteryDashboard* battery) {
    if (!battery || battery->archive.sessions.empty()) return nullptr;
    for (const auto& session : battery->archive.sessions)
        if (session->id == battery->currentSessionID) return session.get();
    return battery->archive.sessions.back().get();
}

} // namespace

void BatteryModel::begin() {
    connect(&store(), &VarnetStore::snapshotChanged, this, &BatteryModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &BatteryModel::refresh);
    refresh();
}

void BatteryModel::refresh() {
    // The snapshot may be replaced by whoever listens to the signals.
    const auto snapshot = store().sharedSnapshot();
    const BatteryDashboard* const battery = snapshot->battery.get();
    const BatteryReading* const reading = BatteryTexts::readingOf(battery);
    const QLocale& locale = context().localization.locale();

    const std::optional<double> charge = reading ? reading->charge : std::nullopt;
    const BatteryTexts::Captioned time = BatteryTexts::time(battery);
    hasPage_ = BatteryTexts::presenceOf(battery) != Presence::none;
    line_ = BatteryTexts::line(battery);
    warning_ = battery && battery->warning ? QString::fromStdString(*battery->warning) : QString();
    charge_ = BatteryDisplay::percent(charge, locale);
    chargeShare_ = std::clamp(charge.value_or(0) / 100, 0.0, 1.0);
    chargeTone_ = toneOf(reading);
    charging_ = reading && reading->state == BatteryState::charging;
    timeLabel_ = time.label;
    time_ = time.figure;
    power_ = BatteryTexts::power(battery, locale);
    figures_.update(batteryFigures(battery, locale));
    emit readingsChanged();
    refreshSession(battery, snapshot->date);
    tick();
}

void BatteryModel::refreshSession(const BatteryDashboard* battery, Date now) {
    const BatterySession* const session = shownSession(battery);
    const QLocale& locale = context().localization.locale();
    const bool running = session && session->id == battery->currentSessionID;
    sessionTitle_ = session && !running ? "Last session" : "This session";
    sessionAbout_.clear();
    sessionNotice_.clear();
    sessionNote_.clear();
    if (session) {
        apps_.update(hungriestApps(*session, shownApps, locale));
        sessionAbout_ = BatteryTexts::measured(session->observedSeconds) + " measured · " +
                        BatteryTexts::charges(*session, locale);
        if (apps_.size() == 0) {
            sessionNotice_ = running ? "Still gathering evidence." : "Nothing was measured.";
            sessionNote_ = running ? "Apps appear here as they use the battery."
                                   : "It ended before an app could be scored.";
        }
    } else {
        apps_.update({});
        sessionNotice_ = battery ? "No session yet." : "Still gathering evidence.";
        sessionNote_ = battery ? "Unplug, and the apps that use the battery appear here."
                               : "Waiting for enough data to check.";
    }
    emit sessionChanged();
    refreshSessions(battery, session, now);
}

void BatteryModel::refreshSessions(const BatteryDashboard* battery, const BatterySession* shown, Date now) {
    const QLocale& locale = context().localization.locale();
    const std::size_t all = shown ? battery->archive.sessions.size() - 1 : 0;
    const bool foldable = all > firstSessions;
    const std::size_t most = foldable && !showAllSessions_ ? firstSessions : all;
    std::vector<BatterySessionRow> rows;
    if (shown) {
        const auto& sessions = battery->archive.sessions;
        for (auto session = sessions.rbegin(); session != sessions.rend() && rows.size() < most; ++session)
            if (session->get() != shown) rows.push_back(sessionRow(**session, now, locale));
    }
    sessions_.update(std::move(rows));
    toggle_ = !foldable          ? QString()
              : showAllSessions_ ? QString("Show fewer")
                                 : QString("View all %1").arg(all);
    emit sessionsChanged();
}

void BatteryModel::setShowAllSessions(bool shown) {
    if (shown == showAllSessions_) return;
    showAllSessions_ = shown;
    refresh();
}

void BatteryModel::tick() {
    const BatteryReading* const reading = BatteryTexts::readingOf(store().snapshot().battery.get());
    const QString updated =
        OverviewTexts::updated(reading ? std::optional(reading->date) : std::nullopt, context().clock.now());
    if (updated == updated_) return;
    updated_ = updated;
    emit updatedChanged();
}

} // namespace varnet
