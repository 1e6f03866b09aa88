#include "VarnetApp/Components/Palette.h"

namespace varnet {

namespace {

QColor rgb(QRgb value) {
    return QColor::fromRgb(value);
}

QColor withAlpha(QColor colour, double alpha) {
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

Palette makeDark() {
    const QColor warmWhite = QColor::fromRgbF(1.0F, 0.87F, 0.76F);
    return {
        .bg = rgb(0x15110E),
        .surface = rgb(0x1E1814),
        .raised = rgb(0x281F1A),
        .hairline = rgb(0x3A2E27),
        .text = rgb(0xF6EEE8),
        .muted = rgb(0xB9A99C),
        .faint = rgb(0x8A7B70),
        .accent = rgb(0xFF7A45),
        .ember = rgb(0xFFB44A),
        .good = rgb(0x5CCB93),
        .warn = rgb(0xF3BD55),
        .bad = rgb(0xFF6B6B),
        .info = rgb(0x6FB3EE),
        .memory = rgb(0xBBA0FF),
        .dev = rgb(0x86A8FF),
        .controlLine = rgb(0x4A3B32),
        .track = rgb(0x332821),
        .bed = rgb(0x100C0A),
        .segment = rgb(0x33281F),
        .selected = rgb(0x281F1A),
        .hover = withAlpha(warmWhite, 0.055),
        .press = withAlpha(warmWhite, 0.11),
        .accentInk = rgb(0x1D0E06),
        .emberFill = rgb(0xFFB44A),
        .link = rgb(0xFF7A45),
        .scrim = withAlpha(rgb(0x0D0906), 0.66),
        .dark = true,
    };
}

Palette makeLight() {
    const QColor brown = QColor::fromRgbF(0.55F, 0.32F, 0.12F);
    return {
        .bg = rgb(0xFAF6F2),
        .surface = rgb(0xFFFFFF),
        .raised = rgb(0xFFFCFA),
        .hairline = rgb(0xE8DDD3),
        .text = rgb(0x241A14),
        .muted = rgb(0x6B5C51),
        .faint = rgb(0x8B7B6F),
        .accent = rgb(0xC9481A),
        .ember = rgb(0x9A6200),
        .good = rgb(0x1E7F4F),
        .warn = rgb(0x8A5A00),
        .bad = rgb(0xC2333A),
        .info = rgb(0x1F6FB2),
        .memory = rgb(0x6B4FC4),
        .dev = rgb(0x3A5FCC),
        .controlLine = rgb(0xD9CBBF),
        .track = rgb(0xEFE6DD),
        .bed = rgb(0xF0E8E0),
        .segment = rgb(0xFFFFFF),
        .selected = rgb(0xFFFFFF),
        .hover = withAlpha(brown, 0.07),
        .press = withAlpha(brown, 0.14),
        .accentInk = rgb(0xFFFFFF),
        .emberFill = rgb(0xB5770C),
        .link = rgb(0xB94216),
        .scrim = withAlpha(rgb(0x291C14), 0.34),
        .dark = false,
    };
}

} // namespace

const Palette& darkPalette() {
    static const Palette palette = makeDark();
    return palette;
}

const Palette& lightPalette() {
    static const Palette palette = makeLight();
    return palette;
}

QColor mixed(const QColor& base, const QColor& other, double share) {
    const auto part = static_cast<float>(share);
    const auto blend = [part](float a, float b) { return a + (b - a) * part; };
    return QColor::fromRgbF(blend(base.redF(), other.redF()), blend(base.greenF(), other.greenF()),
                            blend(base.blueF(), other.blueF()), blend(base.alphaF(), other.alphaF()));
}

QColor over(const QColor& base, const QColor& overlay) {
    QColor opaque = overlay;
    opaque.setAlphaF(base.alphaF());
    return mixed(base, opaque, static_cast<double>(overlay.alphaF()));
}

QColor tintOf(const Palette& palette, const QColor& tone) {
    if (palette.dark) return withAlpha(tone, 0.15);
    // Brown and rust wash out to grey and pink: their brighter siblings tint instead.
    if (tone == palette.warn || tone == palette.ember || tone == palette.emberFill)
        return withAlpha(palette.emberFill, 0.16);
    if (tone == palette.accent || tone == palette.link) return withAlpha(rgb(0xFF7A45), 0.13);
    return withAlpha(tone, 0.10);
}

QColor rowTintOf(const Palette& palette) {
    return withAlpha(rgb(0xFF7A45), palette.dark ? 0.085 : 0.09);
}

QColor tintTextOf(const Palette& palette, const QColor& tone) {
    return palette.dark ? tone : mixed(tone, palette.text, 0.25);
}

QColor tileInkOf(const Palette& palette, const QColor& tone) {
    return mixed(tone, palette.text, 0.25);
}

QColor tileOf(const Palette& palette, const QColor& tone) {
    return mixed(palette.surface, tone, palette.dark ? 0.20 : 0.13);
}

QColor tileLineOf(const Palette& palette, const QColor& tone) {
    return mixed(palette.surface, tone, palette.dark ? 0.36 : 0.30);
}

} // namespace varnet
