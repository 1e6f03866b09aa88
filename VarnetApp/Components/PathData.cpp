#include "VarnetApp/Components/PathData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>

namespace varnet {

namespace {

// Far above any drawing of ours; they bound what hostile text can cost.
constexpr std::size_t longestData = 32768;
constexpr double farthest = 1e6;

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool atEnd() {
        skipBlanks();
        return rest_.empty();
    }

    /// The letter that stands here, taken; 0 when something else does.
    char letter() {
        skipBlanks();
        if (rest_.empty() || std::string_view("MLCQAZ").find(rest_.front()) == std::string_view::npos)
            return 0;
        const char taken = rest_.front();
        rest_.remove_prefix(1);
        return taken;
    }

    bool numbers(std::span<double> into) {
        return std::ranges::all_of(into, [this](double& number) { return one(number); });
    }

private:
    void skipBlanks() {
        const auto first = rest_.find_first_not_of(" \t\n\r,");
        rest_.remove_prefix(first == std::string_view::npos ? rest_.size() : first);
    }

    bool one(double& number) {
        skipBlanks();
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        if (error != std::errc() || !(std::abs(number) <= farthest)) return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }

    std::string_view rest_;
};

double turnBetween(QPointF from, QPointF to) {
    return std::atan2(from.x() * to.y() - from.y() * to.x(), QPointF::dotProduct(from, to));
}

/// One arc of an ellipse as cubics of at most a quarter turn each.
/// @param arc radius x, radius y, turn of the axes in degrees, large (0 or 1), clockwise (0 or 1), end x, end
/// y
bool addArc(QPainterPath& path, std::span<const double, 7> arc) {
    const bool flagsKnown = (arc[3] == 0 || arc[3] == 1) && (arc[4] == 0 || arc[4] == 1);
    if (!flagsKnown) return false;
    const QPointF start = path.currentPosition();
    const QPointF end(arc[5], arc[6]);
    double radiusX = std::abs(arc[0]);
    double radiusY = std::abs(arc[1]);
    if (start == end) return true;
    if (radiusX < 1e-9 || radiusY < 1e-9) {
        path.lineTo(end);
        return true;
    }
    const double turn = arc[2] * std::numbers::pi / 180;
    const double cosine = std::cos(turn);
    const double sine = std::sin(turn);
    // Half the chord, in the ellipse's own axes.
    const QPointF half = (start - end) / 2;
    const QPointF own(cosine * half.x() + sine * half.y(), cosine * half.y() - sine * half.x());
    const double reach = std::pow(own.x() / radiusX, 2) + std::pow(own.y() / radiusY, 2);
    if (reach > 1) {
        radiusX *= std::sqrt(reach);
        radiusY *= std::sqrt(reach);
    }
    const double away = std::sqrt(std::max(0.0, 1 / std::min(reach, 1.0) - 1)) * (arc[3] == arc[4] ? -1 : 1);
    const QPointF ownCentre(away * radiusX * own.y() / radiusY, -away * radiusY * own.x() / radiusX);
    const QPointF middle = (start + end) / 2;
    const auto outward = [&](QPointF point) {
        return QPointF(cosine * point.x() - sine * point.y(), sine * point.x() + cosine * point.y());
    };
    const QPointF centre = outward(ownCentre) + middle;
    const QPointF from((own.x() - ownCentre.x()) / radiusX, (own.y() - ownCentre.y()) / radiusY);
    const QPointF to((-own.x() - ownCentre.x()) / radiusX, (-own.y() - ownCentre.y()) / radiusY);
    double sweep = turnBetween(from, to);
    if (arc[4] == 0 && sweep > 0) sweep -= 2 * std::numbers::pi;
    if (arc[4] == 1 && sweep < 0) sweep += 2 * std::numbers::pi;

    const int pieces =
        std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (std::numbers::pi / 2) - 1e-9)));
    const double step = sweep / pieces;
    const double handle = 4.0 / 3 * std::tan(step / 4);
    double angle = std::atan2(from.y(), from.x());
    const auto at = [&](double x, double y) { return centre + outward({x * radiusX, y * radiusY}); };
    for (int piece = 0; piece < pieces; ++piece, angle += step) {
        const double c0 = std::cos(angle);
        const double s0 = std::sin(angle);
        const double c1 = std::cos(angle + step);
        const double s1 = std::sin(angle + step);
        path.cubicTo(at(c0 - handle * s0, s0 + handle * c0), at(c1 + handle * s1, s1 - handle * c1),
                     piece + 1 == pieces ? end : at(c1, s1));
    }
    return true;
}

} // namespace

QPainterPath pathFromData(std::string_view data) {
    if (data.size() > longestData) return {};
    QPainterPath path;
    Reader reader(data);
    char command = 0;
    std::array<double, 7> n{};
    while (!reader.atEnd()) {
        const char letter = reader.letter();
        // Without a letter the last command goes on: after M with lines, after Z with nothing.
        if (letter != 0)
            command = letter;
        else if (command == 'M')
            command = 'L';
        else if (command == 'Z')
            return {};
        if (path.isEmpty() && path.elementCount() == 0 && command != 'M') return {};
        switch (command) {
        case 'M':
            if (!reader.numbers(std::span(n).first(2))) return {};
            path.moveTo(n[0], n[1]);
            break;
        case 'L':
            if (!reader.numbers(std::span(n).first(2))) return {};
            path.lineTo(n[0], n[1]);
            break;
        case 'Q':
            if (!reader.numbers(std::span(n).first(4))) return {};
            path.quadTo(n[0], n[1], n[2], n[3]);
            break;
        case 'C':
            if (!reader.numbers(std::span(n).first(6))) return {};
            path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]);
            break;
        case 'A':
            if (!reader.numbers(n) || !addArc(path, n)) return {};
            break;
        case 'Z':
            path.closeSubpath();
            break;
        default:
            return {};
        }
    }
    return path;
}

} // namespace varnet
