#include "VarnetApp/Components/Mascot/MascotDrawing.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace varnet {

namespace {

/// How much the flame ducks, at the half, when two builds cannot flow into each other.
constexpr double duck = .1;
constexpr double seatLine = 490;
/// Lids never close to nothing: an ink line stays, as in a blink.
constexpr double blink = .08;

double between(double from, double to, double part) {
    return from + (to - from) * part;
}

QColor mixed(QRgb from, QRgb to, double part) {
    const auto channel = [part](int a, int b) { return qRound(between(a, b, part)); };
    return {channel(qRed(from), qRed(to)), channel(qGreen(from), qGreen(to)),
            channel(qBlue(from), qBlue(to))};
}

bool sameBuild(const QPainterPath& from, const QPainterPath& to) {
    if (from.elementCount() != to.elementCount()) return false;
    for (int i = 0; i < from.elementCount(); ++i) {
        if (from.elementAt(i).type != to.elementAt(i).type) return false;
    }
    return true;
}

QPainterPath mixed(QPainterPath from, const QPainterPath& to, double part) {
    for (int i = 0; i < from.elementCount(); ++i) {
        from.setElementPositionAt(i, between(from.elementAt(i).x, to.elementAt(i).x, part),
                                  between(from.elementAt(i).y, to.elementAt(i).y, part));
    }
    return from;
}

const MascotShape* first(const MascotArt& art, MascotLayer layer) {
    const auto found =
        std::ranges::find_if(art.shapes, [&](const auto& s) { return s.part->layer == layer; });
    return found == art.shapes.end() ? nullptr : &*found;
}

/// Clean builds flow into each other; the runs and curls of the melting one and the frayed one do not.
bool flows(const MascotArt& from, const MascotArt& to) {
    for (const MascotLayer layer : {MascotLayer::body, MascotLayer::core}) {
        const MascotShape* a = first(from, layer);
        const MascotShape* b = first(to, layer);
        if (a == nullptr || b == nullptr || !sameBuild(a->path, b->path)) return false;
    }
    return first(from, MascotLayer::puddle) == nullptr && first(to, MascotLayer::puddle) == nullptr;
}

void scaleAbout(QPainter& painter, QPointF centre, double x, double y) {
    painter.translate(centre);
    painter.scale(x, y);
    painter.translate(-centre);
}

double eyeLine(const MascotArt& art) {
    QRectF eyes;
    for (const MascotShape& shape : art.shapes) {
        if (shape.part->layer == MascotLayer::eye) eyes |= shape.path.boundingRect();
    }
    return eyes.center().y();
}

} // namespace

void paintMascotChange(QPainter& painter, const QRectF& box, FlameExpression from, FlameExpression to,
                       double progress, double devicePixelRatio) {
    const MascotSquare square(box, devicePixelRatio);
    const double part = std::clamp(std::isfinite(progress) ? progress : 1.0, 0.0, 1.0);
    const bool later = part >= .5;
    if (square.empty()) return;
    if (square.little() || from == to || part <= 0 || part >= 1) {
        paintMascot(painter, box, later ? to : from, devicePixelRatio);
        return;
    }
    const MascotArt& before = mascotArt(from);
    const MascotArt& after = mascotArt(to);
    const MascotArt& shown = later ? after : before;
    const MascotArt& other = later ? before : after;
    const bool flowing = flows(before, after);
    // 1 at the ends and 0 at the half, where everything that cannot flow is exchanged.
    const double away = std::abs(2 * part - 1);
    const double open = std::max(blink, away);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    square.enterBox(painter);
    if (!flowing) scaleAbout(painter, {256, seatLine}, 1, 1 - duck * std::sin(part * std::numbers::pi));
    const double line = eyeLine(shown);
    for (const MascotShape& shape : shown.shapes) {
        const MascotPart& piece = *shape.part;
        if (square.level() < piece.smallest) continue;
        painter.save();
        QColor color = QColor::fromRgba(piece.color);
        QPainterPath path = shape.path;
        switch (piece.layer) {
        case MascotLayer::body:
        case MascotLayer::core:
            if (flowing) {
                const MascotShape& twin = *first(other, piece.layer);
                path = mixed(path, twin.path, later ? 1 - part : part);
                color = mixed(piece.color, twin.part->color, later ? 1 - part : part);
            }
            break;
        case MascotLayer::lick:
            scaleAbout(painter, shown.lickBox.center(), away, away);
            break;
        case MascotLayer::eye:
            scaleAbout(painter, {256, line}, 1, open);
            break;
        case MascotLayer::highlight:
        case MascotLayer::shade:
        case MascotLayer::extra:
            // Gone before the body under them has moved away.
            color.setAlphaF(static_cast<float>(std::max(0.0, 2 * away - 1)));
            break;
        case MascotLayer::puddle:
        case MascotLayer::brow:
        case MascotLayer::mouth:
            break;
        }
        drawShape(painter, piece, path, color, square.level());
        painter.restore();
    }
    painter.restore();
}

} // namespace varnet
