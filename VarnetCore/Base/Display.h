#pragma once

#include "VarnetCore/Base/Date.h"

#include <string>

/// Figures as the user reads them.
namespace varnet::Display {

/// The time from a date to now: "59m" under an hour, "25h 1m" from an hour on. Never seconds; a date that
/// lies ahead reads "0m".
std::string duration(Date date, Date now);

} // namespace varnet::Display
