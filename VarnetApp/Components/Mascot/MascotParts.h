#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QRgb>

#include <span>
#include <string_view>

namespace varnet {

/// How much of the mascot is drawn, by the device pixels that its box has.
enum class MascotLevel { tiny, small, compact, mid, rich };

/// What a part is to the character; a change of mood moves the layers differently.
enum class MascotLayer { puddle, body, shade, lick, core, highlight, brow, eye, mouth, extra };

namespace mascotPalette {
inline constexpr QRgb flame = 0xFFFF7A45;
inline constexpr QRgb hotFlame = 0xFFFF633C;
inline constexpr QRgb softFlame = 0xFFF96C3E;
inline constexpr QRgb ember = 0xFFFFB44A;
inline constexpr QRgb hotEmber = 0xFFFFC058;
inline constexpr QRgb softEmber = 0xFFFFA642;
inline constexpr QRgb seat = 0xFFEC6230;
inline constexpr QRgb shine = 0xFFFFE3B0;
inline constexpr QRgb ink = 0xFF2A1710;
inline constexpr QRgb white = 0xFFFFF4E0;
inline constexpr QRgb cheek = 0xFFFF9848;
inline constexpr QRgb water = 0xFF6FB3EE;
inline constexpr QRgb waterShine = 0xFFCFE8FF;
inline constexpr QRgb heart = 0xFFD92B4B;
inline constexpr QRgb heartShine = 0xFFFF9FA8;
} // namespace mascotPalette

/// One flat shape of a mood, in a box of 512 by 512.
struct MascotPart {
    MascotLayer layer;
    QRgb color;
    double pen;           ///< width of a round pen along the path; 0 fills it
    MascotLevel smallest; ///< the barest level that still draws it
    std::string_view path;
};

/// All parts of a mood in painting order.
std::span<const MascotPart> mascotParts(FlameExpression expression);

/// The moods whose flame keeps its seat and hair, leaning at most.
std::span<const MascotPart> seatedParts(FlameExpression expression);

} // namespace varnet
