#pragma once

#include "VarnetCore/Flame/RoastSubject.h"

#include <optional>
#include <string>
#include <vector>

/// The plain sentences beside the joke. No project's name ever gets into one.
namespace varnet::RoastText {

/// "9.8%" below 10, "46%" from there on; "—" when it is not known.
std::string share(std::optional<double> percent);

/// Who the line is about.
std::string subject(const RoastContext& context, const MonitorSnapshot& snapshot);

/// One sentence: what is behind the headline or, when the news has moved on, what is true now.
std::string explanation(const RoastContext& displayed, const RoastContext& measured,
                        const MonitorSnapshot& snapshot);

/// Three short facts at most.
std::vector<std::string> observations(const std::optional<RoastContext>& displayed,
                                      const MonitorSnapshot& snapshot);

} // namespace varnet::RoastText
