#pragma once

namespace varnet {

/// A number rounded to so many decimals as people round it: on its shortest decimal form, halves to the even
/// digit. 12.35 becomes 12.4 although the binary number lies a little below.
/// @param value finite
/// @param decimals 0 to 6
double roundedHalfEven(double value, int decimals);

} // namespace varnet
