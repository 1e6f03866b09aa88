#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QPainterPath>
#include <QTransform>

#include <string_view>

namespace varnet {

/// Lays the mascot on whole pixels: the edges of its seat and the tip of its hair meet pixel edges.
class PixelGrid {
public:
    /// @param size device pixels of the box's side, at least 1
    /// @param top the highest y of the body in the 512 box
    PixelGrid(int size, double top);

    /// From the 512 box to device pixels.
    QTransform shape() const;
    /// Places are counted in the sixteenths of the box that the little faces are drawn on.
    int x(double cells) const;
    int y(double cells) const;
    int width(double cells) const;
    int height(double cells) const;
    int size() const noexcept { return size_; }

private:
    int size_;
    double top_;
    int left_;
    int right_;
    int crown_;
    int seat_;
};

/// An eye of the little sizes: a box on a grid of 16 by 16, drawn in whole pixels.
struct LittleEye {
    enum class Kind { lidded, bar, round, happy, heart };
    enum class Look { left, middle, right };

    Kind kind;
    double x;
    double y;
    double width = 3;
    double height = 3;
    Look look = Look::right; ///< where the pupil of a lidded eye hangs
};

/// The Lick set by hand: rows of '#' and '.', apart by '/'.
struct PixelMark {
    int x;
    int y;
    std::string_view rows;
};

struct LittleFace {
    LittleEye left;
    LittleEye right;
    PixelMark tiny;  ///< on a box of 16 pixels
    PixelMark small; ///< on a box of 22 pixels
};

const LittleFace& littleFace(FlameExpression expression);

/// Whole pixels, in device pixels of the grid; no two rectangles overlap.
QPainterPath eyePixels(const LittleEye& eye, const PixelGrid& grid);
/// The eye with softened corners, in a box of 512, for the larger one-colour flame.
QPainterPath eyeShape(const LittleEye& eye);
/// The mark that fits the grid's size; empty where there is none.
QPainterPath markPixels(const LittleFace& face, const PixelGrid& grid);

} // namespace varnet
