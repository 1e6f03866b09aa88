#pragma once

#include <QColor>

namespace varnet {

/// The colours of one appearance. Every tone that carries words reaches 4.5:1 on `bg`, `surface` and
/// `raised`; `faint`, `accent` and `emberFill` are for shapes.
struct Palette {
    QColor bg, surface, raised, hairline;
    QColor text, muted, faint;
    QColor accent, ember, good, warn, bad, info, memory, dev;
    QColor controlLine; ///< outline of what floats or can be pressed
    QColor track;       ///< beds of bars, toggles that are off, neutral pills
    QColor bed;         ///< bed of a segmented control, a step below the page
    QColor segment;     ///< fill of a selected segment
    QColor selected;    ///< fill of a selected sidebar row and of an open row
    QColor hover;       ///< overlay
    QColor press;       ///< overlay, twice `hover`
    QColor accentInk;   ///< words and marks on `accent`
    QColor emberFill;   ///< the warm yellow of bars and dots
    QColor link;        ///< `accent` as words
    QColor scrim;
    bool dark = true;
};

const Palette& darkPalette();
const Palette& lightPalette();

/// `base` with `share` (0 to 1) of `other` mixed in.
QColor mixed(const QColor& base, const QColor& other, double share);
/// The opaque colour that `overlay` makes on `base`.
QColor over(const QColor& base, const QColor& overlay);

/// A translucent wash of a tone, for pills, ticked things and findings.
QColor tintOf(const Palette& palette, const QColor& tone);
/// The fainter wash of a ticked row.
QColor rowTintOf(const Palette& palette);
/// Words on a tint of that tone.
QColor tintTextOf(const Palette& palette, const QColor& tone);
/// The letter or icon on a tile of that tone.
QColor tileInkOf(const Palette& palette, const QColor& tone);
QColor tileOf(const Palette& palette, const QColor& tone);
QColor tileLineOf(const Palette& palette, const QColor& tone);

} // namespace varnet
