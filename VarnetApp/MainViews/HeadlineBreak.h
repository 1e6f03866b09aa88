#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace varnet {

/// Sets a headline in one line, or in two with a line feed between them: after a sentence where both halves
/// fit, so that the punchline stands alone, else where the halves are most even. Empty when two lines are not
/// enough.
/// @param width what a line may take, in the unit of `measure`
/// @param measure the width of a piece of the headline
std::optional<QString> brokenHeadline(const QString& headline, double width,
                                      const std::function<double(const QString&)>& measure);

} // namespace varnet
