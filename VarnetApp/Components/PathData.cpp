#include "VarnetApp/Components/PathData.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace varnet {

namespace {

class PathReader {
public:
    explicit PathReader(std::string_view data) : rest_(data) {}

    QPainterPath read() {
        while (command()) {
        }
        return path_;
    }

private:
    void skipBlanks() {
        const auto end = rest_.find_first_not_of(" \t\r\n,");
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end);
    }

    bool number(double& value) {
        skipBlanks();
        const char* const end = rest_.data() + rest_.size();
        const auto [next, error] = std::from_chars(rest_.data(), end, value);
        if (error != std::errc{} || !std::isfinite(value)) return false;
        rest_.remove_prefix(static_cast<std::size_t>(next - rest_.data()));
        return true;
    }

    template <std::size_t count>
    bool numbers(std::array<double, count>& values) {
        for (double& value : values)
            if (!number(value)) return false;
        return true;
    }

    bool command() {
        skipBlanks();
        if (rest_.empty()) return false;
        const char letter = rest_.front();
        const bool named = (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
        if (named) {
            rest_.remove_prefix(1);
            last_ = letter;
        } else if (last_ == 'M') {
            last_ = 'L'; // further pairs after a move are lines
        } else if (last_ == 'Z' || last_ == '\0') {
            return false;
        }
        return draw();
    }

    bool draw() {
        switch (last_) {
        case 'M':
            return move();
        case 'L':
            return line();
        case 'H':
        case 'V':
            return straight();
        case 'Q':
            return quadratic();
        case 'C':
            return cubic();
        case 'A':
            return arc();
        case 'Z':
            path_.closeSubpath();
            return true;
        default:
            return false;
        }
    }

    bool move() {
        std::array<double, 2> p{};
        if (!numbers(p)) return false;
        path_.moveTo(p[0], p[1]);
        return true;
    }

    bool line() {
        std::array<double, 2> p{};
        if (!numbers(p)) return false;
        path_.lineTo(p[0], p[1]);
        return true;
    }

    bool straight() {
        double value = 0;
        if (!number(value)) return false;
        const QPointF from = path_.currentPosition();
        path_.lineTo(last_ == 'H' ? QPointF(value, from.y()) : QPointF(from.x(), value));
        return true;
    }

    bool quadratic() {
        std::array<double, 4> p{};
        if (!numbers(p)) return false;
        path_.quadTo(p[0], p[1], p[2], p[3]);
        return true;
    }

    bool cubic() {
        std::array<double, 6> p{};
        if (!numbers(p)) return false;
        path_.cubicTo(p[0], p[1], p[2], p[3], p[4], p[5]);
        return true;
    }

    bool arc() {
        std::array<double, 7> p{};
        if (!numbers(p)) return false;
        arcTo(p[0], p[1], p[2], p[3] != 0, p[4] != 0, {p[5], p[6]});
        return true;
    }

    // From end points to centre and angles, then one cubic for each quarter turn at most.
    void arcTo(double rx, double ry, double degrees, bool large, bool sweep, QPointF to) {
        const QPointF from = path_.currentPosition();
        rx = std::abs(rx);
        ry = std::abs(ry);
        if (from == to) return;
        if (rx <= 0 || ry <= 0) {
            path_.lineTo(to);
            return;
        }
        const double turn = degrees * std::numbers::pi / 180;
        const double cosTurn = std::cos(turn);
        const double sinTurn = std::sin(turn);
        const QPointF half = (from - to) / 2;
        const double x = cosTurn * half.x() + sinTurn * half.y();
        const double y = -sinTurn * half.x() + cosTurn * half.y();
        const double stretch = std::hypot(x / rx, y / ry);
        if (stretch > 1) {
            rx *= stretch;
            ry *= stretch;
        }
        const double distance = (x * x) / (rx * rx) + (y * y) / (ry * ry);
        double scale = std::sqrt(std::max(0.0, 1 / distance - 1));
        if (large == sweep) scale = -scale;
        const double cx = scale * rx * y / ry;
        const double cy = -scale * ry * x / rx;
        const QPointF middle = (from + to) / 2;
        const QPointF centre(cosTurn * cx - sinTurn * cy + middle.x(),
                             sinTurn * cx + cosTurn * cy + middle.y());

        const double start = std::atan2((y - cy) / ry, (x - cx) / rx);
        double span = std::atan2((-y - cy) / ry, (-x - cx) / rx) - start;
        if (sweep && span < 0) span += 2 * std::numbers::pi;
        if (!sweep && span > 0) span -= 2 * std::numbers::pi;

        const int pieces =
            std::max(1, static_cast<int>(std::ceil(std::abs(span) / (std::numbers::pi / 2) - 1e-9)));
        const double step = span / pieces;
        const double handle = 4.0 / 3.0 * std::tan(step / 4);
        const auto onEllipse = [&](double ex, double ey) {
            return QPointF(centre.x() + cosTurn * rx * ex - sinTurn * ry * ey,
                           centre.y() + sinTurn * rx * ex + cosTurn * ry * ey);
        };
        for (int i = 0; i < pieces; ++i) {
            const double a = start + step * i;
            const double b = a + step;
            const QPointF end = i + 1 == pieces ? to : onEllipse(std::cos(b), std::sin(b));
            path_.cubicTo(onEllipse(std::cos(a) - handle * std::sin(a), std::sin(a) + handle * std::cos(a)),
                          onEllipse(std::cos(b) + handle * std::sin(b), std::sin(b) - handle * std::cos(b)),
                          end);
        }
    }

    std::string_view rest_;
    char last_ = '\0';
    QPainterPath path_;
};

} // namespace

QPainterPath pathFromData(std::string_view data) {
    return PathReader(data).read();
}

} // namespace varnet
