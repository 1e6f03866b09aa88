#include "VarnetApp/Components/Mascot/MascotArt.h"

#include "VarnetApp/Components/PathData.h"

#include <array>
#include <mutex>

namespace varnet {

namespace {

// The curls that hang over the melting flame blur once they are a pixel wide.
constexpr std::string_view meltingLittleBody =
    "M84 490 C78 460 84 430 88 408 C90 386 72 376 34 392 C44 330 104 292 164 296 C182 248 236 226 300 228 "
    "C372 228 434 262 458 326 C430 308 402 310 390 334 C386 362 398 382 400 410 C404 440 410 464 404 490 Z";

MascotArt read(FlameExpression expression) {
    MascotArt art;
    for (const MascotPart& part : mascotParts(expression)) {
        art.shapes.push_back({&part, pathFromData(part.path)});
        const QPainterPath& path = art.shapes.back().path;
        if (part.layer == MascotLayer::body) art.body = path;
        if (part.layer == MascotLayer::lick) art.lickBox |= path.boundingRect();
    }
    art.top = art.body.boundingRect().top();
    art.littleBody = expression == FlameExpression::melting ? pathFromData(meltingLittleBody) : art.body;
    return art;
}

struct KeptArt {
    std::once_flag once;
    MascotArt art;
};

} // namespace

const MascotArt& mascotArt(FlameExpression expression) {
    static std::array<KeptArt, flameExpressionCount> kept;
    const auto index = static_cast<std::size_t>(expression);
    KeptArt& one = kept[index < kept.size() ? index : static_cast<std::size_t>(FlameExpression::confused)];
    std::call_once(one.once, [&] { one.art = read(expression); });
    return one.art;
}

MascotLevel mascotLevel(int devicePixels) {
    if (devicePixels >= 96) return MascotLevel::rich;
    if (devicePixels >= 44) return MascotLevel::mid;
    if (devicePixels >= 28) return MascotLevel::compact;
    if (devicePixels >= 20) return MascotLevel::small;
    return MascotLevel::tiny;
}

} // namespace varnet
