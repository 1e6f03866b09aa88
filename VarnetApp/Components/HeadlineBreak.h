#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace varnet {

/// Sets a headline in one line, or in as few as fit with line feeds between them: after sentences where that
/// fits, so that the punchline stands alone, else where the lines are most even. Empty when `most` lines are
/// not enough.
/// @param width what a line may take, in the unit of `measure`
/// @param measure the width of a piece of the headline
/// @param most lines, 1 to 3
std::optional<QString> brokenHeadline(const QString& headline, double width,
                                      const std::function<double(const QString&)>& measure, int most = 2);

} // namespace varnet
