#include "VarnetApp/Components/Mascot/LittleFace.h"

#include "VarnetApp/Components/PathData.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varnet {

namespace {

using Kind = LittleEye::Kind;
using Look = LittleEye::Look;

// Below this a hand-set mark would be as large as the flame.
constexpr int smallestMarked = 14;
constexpr int tinyGrid = 16;
constexpr int smallGrid = 22;
constexpr int firstSmall = 20;

// In the order of FlameExpression.
constexpr std::array<LittleFace, flameExpressionCount> faces = {{
    {.left = {Kind::lidded, 4, 9},
     .right = {Kind::lidded, 9, 9},
     .tiny = {11, 2, ".##./####/#..#"},
     .small = {15, 2, "..###../.#####./###..##/##....#"}},
    {.left = {Kind::lidded, 4, 10, 3, 2},
     .right = {Kind::lidded, 9, 10, 3, 2, Look::left},
     .tiny = {},
     .small = {}},
    {.left = {Kind::bar, 4, 11, 3, 1},
     .right = {Kind::bar, 9, 11, 3, 1},
     .tiny = {12, 1, "####/..#./.#../####"},
     .small = {13, 0,
               ".....####/.......#./......#../.....####/#####..../...##..../..##...../.##....../#####...."}},
    {.left = {Kind::lidded, 3.5, 10, 3, 2, Look::left},
     .right = {Kind::lidded, 8.5, 10, 3, 2, Look::left},
     .tiny = {11, 3, "...##/.###./##..."},
     .small = {15, 3, "......#/....###/..####./####.../##....."}},
    {.left = {Kind::round, 4.5, 9, 2, 3},
     .right = {Kind::round, 9.5, 9, 2, 3},
     .tiny = {},
     .small = {16, 2, "..#../..#../.###./#####/#####/#####/.###."}},
    {.left = {Kind::lidded, 4, 10, 3, 2, Look::middle},
     .right = {Kind::lidded, 8, 11, 3, 2, Look::middle},
     .tiny = {14, 11, "#/#"},
     .small = {19, 15, "#./##/##"}},
    {.left = {Kind::round, 4, 9},
     .right = {Kind::round, 9, 10, 2, 2},
     .tiny = {13, 0, ".##/##./###/.#./#.."},
     .small = {17, 0, "..###/.###./.##../#####/..##./.##../.#.../#...."}},
    {.left = {Kind::round, 5, 8, 2, 4},
     .right = {Kind::round, 9, 8, 2, 4},
     .tiny = {12, 1, "##/##/##/##/../##"},
     .small = {17, 1, "###/###/###/###/.#./.../###/###"}},
    {.left = {Kind::round, 4, 9, 2, 3},
     .right = {Kind::lidded, 9, 10, 3, 2},
     .tiny = {13, 0, "###/..#/##./#../.../#.."},
     .small = {16, 1, ".###./##.##/...##/..##./.##../...../.##../.##.."}},
    {.left = {Kind::happy, 4, 9},
     .right = {Kind::happy, 9, 9},
     .tiny = {11, 1, "..#../..#../#####/..#../..#../....#"},
     .small = {15, 1, "...#.../...#.../..###../#######/..###../...#.../...#.#./....###/.....#."}},
    {.left = {Kind::lidded, 4, 9},
     .right = {Kind::bar, 9, 10, 3, 1},
     .tiny = {13, 0, "##/##/../##/##/#."},
     .small = {17, 1, "###/###/.../###/###/.##/.#./#.."}},
    {.left = {Kind::heart, 4, 9},
     .right = {Kind::heart, 9, 9},
     .tiny = {11, 1, "##.##/#####/#####/.###./..#.."},
     .small = {15, 2, ".##.##./#######/#######/.#####./..###../...#..."}},
}};

/// The pupil covers half the lid, a pixel more where it cannot be even.
int pupilOffset(Look look, int width, int pupil) {
    if (look == Look::left) return 0;
    return look == Look::right ? width - pupil : (width - pupil) / 2;
}

QPainterPath liddedShape(const QRectF& box, Look look) {
    constexpr double corner = 10;
    constexpr double bowl = 30;
    constexpr double lid = 32;
    constexpr double pupil = 64;
    const double left = box.left() + (look == Look::left    ? 0
                                      : look == Look::right ? box.width() - pupil
                                                            : (box.width() - pupil) / 2);
    const double right = left + pupil;
    const double under = box.top() + lid;
    QPainterPath path;
    path.moveTo(box.left() + corner, box.top());
    path.lineTo(box.right() - corner, box.top());
    path.quadTo(box.right(), box.top(), box.right(), box.top() + corner);
    if (right < box.right()) {
        path.lineTo(box.right(), under - corner);
        path.quadTo(box.right(), under, box.right() - corner, under);
        path.lineTo(right, under);
    }
    path.lineTo(right, box.bottom() - bowl);
    path.quadTo(right, box.bottom(), right - bowl, box.bottom());
    path.lineTo(left + bowl, box.bottom());
    path.quadTo(left, box.bottom(), left, box.bottom() - bowl);
    if (left > box.left()) {
        path.lineTo(left, under);
        path.lineTo(box.left() + corner, under);
        path.quadTo(box.left(), under, box.left(), under - corner);
    }
    path.lineTo(box.left(), box.top() + corner);
    path.quadTo(box.left(), box.top(), box.left() + corner, box.top());
    path.closeSubpath();
    return path;
}

} // namespace

PixelGrid::PixelGrid(int size, double top)
    : size_(std::max(size, 1)), top_(std::min(top, 20.0)), left_(qRound(66 * size_ / 512.0)),
      right_(std::max(left_ + 1, qRound(450 * size_ / 512.0))), crown_(qRound(14 * size_ / 512.0)),
      seat_(std::max(crown_ + 1, qRound(490 * size_ / 512.0))) {}

QTransform PixelGrid::shape() const {
    const double scaleX = (right_ - left_) / (450.0 - 66);
    // The melting flame is low: its height keeps the scale of the others.
    const double scaleY = (seat_ - crown_) / (490.0 - top_);
    return {scaleX, 0, 0, scaleY, left_ - 66 * scaleX, crown_ - top_ * scaleY};
}

int PixelGrid::x(double cells) const {
    return left_ + qRound((cells - 2) * (right_ - left_) / 12);
}
int PixelGrid::y(double cells) const {
    return crown_ + qRound(cells * (seat_ - crown_) / 15);
}
int PixelGrid::width(double cells) const {
    return std::max(1, qRound(cells * (right_ - left_) / 12));
}
int PixelGrid::height(double cells) const {
    return std::max(1, qRound(cells * (seat_ - crown_) / 15));
}

const LittleFace& littleFace(FlameExpression expression) {
    const auto index = static_cast<std::size_t>(expression);
    return faces[index < faces.size() ? index : static_cast<std::size_t>(FlameExpression::confused)];
}

QPainterPath eyePixels(const LittleEye& eye, const PixelGrid& grid) {
    const int x = grid.x(eye.x);
    const int y = grid.y(eye.y);
    const int width = grid.width(eye.width);
    const int height = grid.height(eye.height);
    QPainterPath path;
    const auto add = [&](int left, int top, int wide, int high) {
        if (wide > 0 && high > 0) path.addRect(x + left, y + top, wide, high);
    };
    switch (eye.kind) {
    case Kind::lidded: {
        const int pupil = (width + 1) / 2;
        add(0, 0, width, 1);
        add(pupilOffset(eye.look, width, pupil), 1, pupil, height - 1);
        break;
    }
    case Kind::bar:
        add(0, 0, width, 1);
        break;
    case Kind::round: {
        const int cut = width >= 4 && height >= 4 ? 1 : 0;
        add(cut, 0, width - 2 * cut, cut);
        add(0, cut, width, height - 2 * cut);
        add(cut, height - cut, width - 2 * cut, cut);
        break;
    }
    case Kind::happy: {
        const int leg = std::max(1, height / 2);
        add(1, 0, width - 2, 1);
        add(0, 1, 1, leg);
        add(width - 1, 1, 1, leg);
        break;
    }
    case Kind::heart: {
        const int taper = (width - 1) / 2;
        const int notch = width % 2 == 1 ? 1 : 2;
        const int lobe = (width - notch) / 2;
        add(0, 0, lobe, 1);
        add(width - lobe, 0, lobe, 1);
        add(0, 1, width, height - 1 - taper);
        for (int row = 1; row <= taper; ++row)
            add(row, height - 1 - taper + row, width - 2 * row, 1);
        break;
    }
    }
    return path;
}

QPainterPath eyeShape(const LittleEye& eye) {
    static const QPainterPath happy =
        pathFromData("M0 76 C6 -4 90 -4 96 76 Q82 90 66 76 C60 34 36 34 30 76 Q14 90 0 76 Z");
    static const QPainterPath heart =
        pathFromData("M48 94 C26 78 0 58 0 35 C0 1 38 -1 48 28 C58 -1 96 1 96 35 C96 58 70 78 48 94 Z");
    const QRectF box(eye.x * 32, eye.y * 32, eye.width * 32, eye.height * 32);
    QPainterPath path;
    switch (eye.kind) {
    case Kind::lidded:
        return liddedShape(box, eye.look);
    case Kind::bar:
        path.addRoundedRect(box, 10, 10);
        break;
    case Kind::round:
        path.addEllipse(box);
        break;
    case Kind::happy:
        return happy.translated(box.topLeft());
    case Kind::heart:
        return heart.translated(box.topLeft());
    }
    return path;
}

QPainterPath markPixels(const LittleFace& face, const PixelGrid& grid) {
    const bool small = grid.size() >= firstSmall;
    const PixelMark& mark = small ? face.small : face.tiny;
    const int base = small ? smallGrid : tinyGrid;
    QPainterPath path;
    if (mark.rows.empty() || grid.size() < smallestMarked) return path;
    const int columns = static_cast<int>(std::min(mark.rows.find('/'), mark.rows.size()));
    const int left = std::min(qRound(double(mark.x) * grid.size() / base), grid.size() - columns);
    const int top = qRound(double(mark.y) * grid.size() / base);
    int column = 0;
    int row = 0;
    for (const char pixel : mark.rows) {
        if (pixel == '/') {
            ++row;
            column = 0;
            continue;
        }
        if (pixel == '#') path.addRect(left + column, top + row, 1, 1);
        ++column;
    }
    return path;
}

} // namespace varnet
