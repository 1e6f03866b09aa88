#include "VarnetApp/Components/Theme.h"

#include "VarnetApp/Components/Typeface.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QJSEngine>
#include <QPointer>

#include <array>
#include <cmath>
#include <cstdint>

namespace varnet {

namespace {

// Capitals stand in the middle of the line, and the baseline a hair below a whole pixel: it then lands on
// that pixel at every scale, wherever the glyphs' own rounding would have put it.
double nudgeOf(const QFont& font, int line) {
    const QFontMetricsF metrics(font);
    const double baseline = std::floor((line + metrics.capHeight()) / 2);
    return baseline + 0.05 - metrics.ascent();
}

// FNV-1a: the same tone in every run, unlike a seeded hash.
std::uint32_t stableHash(const QString& name) {
    std::uint32_t hash = 2166136261U;
    const QByteArray bytes = name.toUtf8();
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 16777619U;
    }
    return hash ^ (hash >> 16U);
}

} // namespace

Theme& Theme::shared() {
    // Owned by the application object: it must be gone before the font database is.
    static QPointer<Theme> theme;
    if (theme.isNull()) theme = new Theme(QCoreApplication::instance());
    return *theme;
}

Theme* Theme::create(QQmlEngine* /*engine*/, QJSEngine* /*scriptEngine*/) {
    Theme* const theme = &shared();
    QJSEngine::setObjectOwnership(theme, QJSEngine::CppOwnership);
    return theme;
}

Theme::Theme(QObject* parent) : QObject(parent) {
    display_ = typeface(28, QFont::DemiBold, -0.5);
    title_ = typeface(17, QFont::DemiBold);
    body_ = typeface(13, QFont::Normal);
    bodyMedium_ = typeface(13, QFont::Medium);
    strong_ = typeface(13, QFont::DemiBold);
    caption_ = typeface(11, QFont::Medium);
    captionStrong_ = typeface(11, QFont::DemiBold);
    displayNudge_ = nudgeOf(display_, displayLine());
    titleNudge_ = nudgeOf(title_, titleLine());
    bodyNudge_ = nudgeOf(body_, bodyLine());
    captionNudge_ = nudgeOf(caption_, captionLine());
}

void Theme::setDark(bool dark) {
    if (dark_ == dark) return;
    dark_ = dark;
    emit changed();
}

void Theme::setReducedMotion(bool reduced) {
    if (reducedMotion_ == reduced) return;
    reducedMotion_ = reduced;
    emit motionChanged();
}

QColor Theme::fade(QColor tone, double opacity) const {
    tone.setAlphaF(tone.alphaF() * static_cast<float>(opacity));
    return tone;
}

QColor Theme::tileTone(TileKind kind, const QString& name, bool inDark) const {
    const Palette& colours = inDark ? darkPalette() : lightPalette();
    switch (kind) {
    case TileKind::Application: {
        const std::array tones{colours.info,   colours.memory, colours.good,
                               colours.accent, colours.bad,    colours.ember};
        return tones[stableHash(name) % tones.size()];
    }
    case TileKind::Project:
        return colours.dev;
    case TileKind::Server:
        return colours.info;
    case TileKind::Other:
        break;
    }
    return colours.faint;
}

} // namespace varnet
