#include "VarnetApp/Components/Theme.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QJSEngine>
#include <QPointer>

#include <array>
#include <cstdint>

namespace varnet {

namespace {

QString sansFamily() {
    const QString inter = QStringLiteral("Inter");
    if (QFontDatabase::hasFamily(inter)) return inter;
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

QFont fontOf(const QString& family, int pixels, QFont::Weight weight, double spacing = 0) {
    QFont font(family);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (spacing != 0) font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    return font;
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
    const QString family = sansFamily();
    display_ = fontOf(family, 28, QFont::DemiBold, -0.5);
    title_ = fontOf(family, 17, QFont::DemiBold);
    body_ = fontOf(family, 13, QFont::Normal);
    bodyMedium_ = fontOf(family, 13, QFont::Medium);
    strong_ = fontOf(family, 13, QFont::DemiBold);
    caption_ = fontOf(family, 11, QFont::Medium);
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
