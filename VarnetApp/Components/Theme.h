#pragma once

#include "VarnetApp/Components/Palette.h"

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace varnet {

/// Colours, type, spacing and motion of every view; lengths in logical pixels, durations in milliseconds.
/// One instance serves the whole application: painters written in C++ and every QML engine, one after the
/// other. Main thread only.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark WRITE setDark NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ reducedMotion WRITE setReducedMotion NOTIFY motionChanged)

    // Colours.
    Q_PROPERTY(QColor bg READ bg NOTIFY changed)
    Q_PROPERTY(QColor surface READ surface NOTIFY changed)
    Q_PROPERTY(QColor raised READ raised NOTIFY changed)
    Q_PROPERTY(QColor hairline READ hairline NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor muted READ muted NOTIFY changed)
    Q_PROPERTY(QColor faint READ faint NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor ember READ ember NOTIFY changed)
    Q_PROPERTY(QColor good READ good NOTIFY changed)
    Q_PROPERTY(QColor warn READ warn NOTIFY changed)
    Q_PROPERTY(QColor bad READ bad NOTIFY changed)
    Q_PROPERTY(QColor info READ info NOTIFY changed)
    Q_PROPERTY(QColor memory READ memory NOTIFY changed)
    Q_PROPERTY(QColor dev READ dev NOTIFY changed)
    Q_PROPERTY(QColor controlLine READ controlLine NOTIFY changed)
    Q_PROPERTY(QColor track READ track NOTIFY changed)
    Q_PROPERTY(QColor bed READ bed NOTIFY changed)
    Q_PROPERTY(QColor segment READ segment NOTIFY changed)
    Q_PROPERTY(QColor selected READ selected NOTIFY changed)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed)
    Q_PROPERTY(QColor press READ press NOTIFY changed)
    Q_PROPERTY(QColor accentInk READ accentInk NOTIFY changed)
    Q_PROPERTY(QColor emberFill READ emberFill NOTIFY changed)
    Q_PROPERTY(QColor link READ link NOTIFY changed)
    Q_PROPERTY(QColor scrim READ scrim NOTIFY changed)

    // Type, and the line height of each size.
    Q_PROPERTY(QFont display READ display CONSTANT)
    Q_PROPERTY(QFont title READ title CONSTANT)
    Q_PROPERTY(QFont body READ body CONSTANT)
    Q_PROPERTY(QFont bodyMedium READ bodyMedium CONSTANT)
    Q_PROPERTY(QFont strong READ strong CONSTANT)
    Q_PROPERTY(QFont caption READ caption CONSTANT)
    Q_PROPERTY(QFont captionStrong READ captionStrong CONSTANT)
    Q_PROPERTY(int displayLine READ displayLine CONSTANT)
    Q_PROPERTY(int titleLine READ titleLine CONSTANT)
    Q_PROPERTY(int bodyLine READ bodyLine CONSTANT)
    Q_PROPERTY(int captionLine READ captionLine CONSTANT)

    // How far the letters of each size are pushed down to sit centred in their line, on a whole pixel.
    Q_PROPERTY(double displayNudge READ displayNudge CONSTANT)
    Q_PROPERTY(double titleNudge READ titleNudge CONSTANT)
    Q_PROPERTY(double bodyNudge READ bodyNudge CONSTANT)
    Q_PROPERTY(double captionNudge READ captionNudge CONSTANT)

    // Spacing and corners.
    Q_PROPERTY(int gap READ gap CONSTANT)
    Q_PROPERTY(int padding READ padding CONSTANT)
    Q_PROPERTY(int pagePadding READ pagePadding CONSTANT)
    Q_PROPERTY(int radiusTick READ radiusTick CONSTANT)
    Q_PROPERTY(int radiusSegment READ radiusSegment CONSTANT)
    Q_PROPERTY(int radius READ radius CONSTANT)
    Q_PROPERTY(int radiusPill READ radiusPill CONSTANT)
    Q_PROPERTY(int radiusCard READ radiusCard CONSTANT)

    // Motion: all of it 0 when motion is reduced.
    Q_PROPERTY(int hoverDuration READ hoverDuration NOTIFY motionChanged)
    Q_PROPERTY(int slideDuration READ slideDuration NOTIFY motionChanged)
    Q_PROPERTY(int sheetDuration READ sheetDuration NOTIFY motionChanged)
    Q_PROPERTY(int scrimDuration READ scrimDuration NOTIFY motionChanged)
    Q_PROPERTY(int faceDuration READ faceDuration NOTIFY motionChanged)

public:
    /// What a tile stands for; it decides the tile's tone.
    enum class TileKind { Application, Project, Server, Other };
    Q_ENUM(TileKind)

    /// The application's one instance, made at first use. It outlives every engine.
    static Theme& shared();
    /// The same instance for a QML engine, which does not own it.
    static Theme* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    bool dark() const noexcept { return dark_; }
    void setDark(bool dark);
    bool reducedMotion() const noexcept { return reducedMotion_; }
    void setReducedMotion(bool reduced);

    const Palette& palette() const { return dark_ ? darkPalette() : lightPalette(); }

    QColor bg() const { return palette().bg; }
    QColor surface() const { return palette().surface; }
    QColor raised() const { return palette().raised; }
    QColor hairline() const { return palette().hairline; }
    QColor text() const { return palette().text; }
    QColor muted() const { return palette().muted; }
    QColor faint() const { return palette().faint; }
    QColor accent() const { return palette().accent; }
    QColor ember() const { return palette().ember; }
    QColor good() const { return palette().good; }
    QColor warn() const { return palette().warn; }
    QColor bad() const { return palette().bad; }
    QColor info() const { return palette().info; }
    QColor memory() const { return palette().memory; }
    QColor dev() const { return palette().dev; }
    QColor controlLine() const { return palette().controlLine; }
    QColor track() const { return palette().track; }
    QColor bed() const { return palette().bed; }
    QColor segment() const { return palette().segment; }
    QColor selected() const { return palette().selected; }
    QColor hover() const { return palette().hover; }
    QColor press() const { return palette().press; }
    QColor accentInk() const { return palette().accentInk; }
    QColor emberFill() const { return palette().emberFill; }
    QColor link() const { return palette().link; }
    QColor scrim() const { return palette().scrim; }

    const QFont& display() const { return display_; }
    const QFont& title() const { return title_; }
    const QFont& body() const { return body_; }
    const QFont& bodyMedium() const { return bodyMedium_; }
    const QFont& strong() const { return strong_; }
    const QFont& caption() const { return caption_; }
    const QFont& captionStrong() const { return captionStrong_; }

    static constexpr int gap() { return 16; }
    static constexpr int padding() { return 16; }
    static constexpr int pagePadding() { return 24; }
    static constexpr int radiusTick() { return 5; }
    static constexpr int radiusSegment() { return 6; }
    static constexpr int radius() { return 8; }
    static constexpr int radiusPill() { return 10; }
    static constexpr int radiusCard() { return 12; }
    static constexpr int displayLine() { return 34; }
    static constexpr int titleLine() { return 24; }
    static constexpr int bodyLine() { return 19; }
    static constexpr int captionLine() { return 15; }
    double displayNudge() const { return displayNudge_; }
    double titleNudge() const { return titleNudge_; }
    double bodyNudge() const { return bodyNudge_; }
    double captionNudge() const { return captionNudge_; }

    int hoverDuration() const { return moving(80); }
    int slideDuration() const { return moving(140); }
    int sheetDuration() const { return moving(160); }
    int scrimDuration() const { return moving(120); }
    int faceDuration() const { return moving(240); }

    /// A wash of a tone, and the words on it.
    Q_INVOKABLE QColor tint(const QColor& tone) const { return tintOf(palette(), tone); }
    Q_INVOKABLE QColor tintText(const QColor& tone) const { return tintTextOf(palette(), tone); }
    /// What stands on a tile or a treemap's square, its fill and its outline.
    Q_INVOKABLE QColor tileInk(const QColor& tone) const { return tileInkOf(palette(), tone); }
    Q_INVOKABLE QColor tile(const QColor& tone) const { return tileOf(palette(), tone); }
    Q_INVOKABLE QColor tileLine(const QColor& tone) const { return tileLineOf(palette(), tone); }
    /// The fainter wash of a ticked row.
    Q_PROPERTY(QColor rowTint READ rowTint NOTIFY changed)
    QColor rowTint() const { return rowTintOf(palette()); }
    Q_INVOKABLE QColor mix(const QColor& base, const QColor& other, double share) const {
        return mixed(base, other, share);
    }
    /// The opaque colour that a translucent overlay makes on a base.
    Q_INVOKABLE QColor cover(const QColor& base, const QColor& overlay) const { return over(base, overlay); }
    /// A tone with this opacity, from 0 to 1: leaves are faded, never their parents.
    Q_INVOKABLE QColor fade(QColor tone, double opacity) const;

    /// A tone for a tile. Applications are spread over six tones by name, always the same for one name.
    /// @param inDark pass `Theme.dark`, so that a binding follows the appearance
    Q_INVOKABLE QColor tileTone(TileKind kind, const QString& name, bool inDark) const;

signals:
    void changed();
    void motionChanged();

private:
    explicit Theme(QObject* parent = nullptr);
    int moving(int milliseconds) const noexcept { return reducedMotion_ ? 0 : milliseconds; }

    // Constant after construction.
    QFont display_;
    QFont title_;
    QFont body_;
    QFont bodyMedium_;
    QFont strong_;
    QFont caption_;
    QFont captionStrong_;
    double displayNudge_ = 0;
    double titleNudge_ = 0;
    double bodyNudge_ = 0;
    double captionNudge_ = 0;
    bool dark_ = true;
    bool reducedMotion_ = false;
};

} // namespace varnet
