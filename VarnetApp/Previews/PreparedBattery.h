#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Battery/BatteryTracker.h"

#include <memory>

/// A laptop's battery after a year, made up: what pictures of the views show.
namespace varnet::PreparedBattery {

using Dashboard = std::shared_ptr<const BatteryDashboard>;

/// Three hours into a session.
Dashboard onBattery(Date now);
/// On the cable again after that session.
Dashboard charging(Date now);
Dashboard full(Date now);
/// An old battery with little left.
Dashboard low(Date now);
/// A machine that tells nothing but the percentage.
Dashboard sparse(Date now);
/// The first minutes after the program was installed.
Dashboard fresh(Date now);
/// A battery that no longer answers.
Dashboard unreadable(Date now);
/// A machine without one.
Dashboard none(Date now);
/// A history that cannot be saved.
Dashboard unsaved(Date now);

} // namespace varnet::PreparedBattery
