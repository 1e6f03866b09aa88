#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <cstdint>
#include <memory>

/// A developer's machine on an ordinary afternoon, made up: what pictures of the views show. Every group,
/// server and finding in it comes out of the same logic that a live machine goes through.
namespace varnet::PreparedMachine {

/// Whose machine it is.
inline constexpr std::uint32_t user = 1000;

/// The moment that the pictures show.
Date now() noexcept;

/// Apps, projects, six servers and two findings.
std::shared_ptr<const MonitorSnapshot> busy();
/// The same with every kind of finding.
std::shared_ptr<const MonitorSnapshot> manyFindings();
/// The same with nothing to attend to.
std::shared_ptr<const MonitorSnapshot> calm();
/// Before the first measurement.
std::shared_ptr<const MonitorSnapshot> gathering();
/// A machine that cannot be measured.
std::shared_ptr<const MonitorSnapshot> failing();

} // namespace varnet::PreparedMachine
