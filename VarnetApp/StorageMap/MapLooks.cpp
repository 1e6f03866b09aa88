#include "VarnetApp/StorageMap/MapLooks.h"

#include <algorithm>
#include <array>

namespace varnet {

namespace {

struct Symbol {
    std::string_view symbol;
    const char* icon;
};

// Sorted by symbol.
constexpr auto symbols = std::to_array<Symbol>({
    {"archivebox.fill", "archive"},
    {"arrow.down.circle.fill", "download"},
    {"arrow.triangle.branch", "projects"},
    {"bolt.fill", "bolt"},
    {"books.vertical.fill", "book"},
    {"chevron.left.forwardslash.chevron.right", "code"},
    {"clock.fill", "clock"},
    {"cloud.fill", "cloud"},
    {"cube.fill", "servers"},
    {"curlybraces", "braces"},
    {"cylinder.split.1x2.fill", "database"},
    {"doc.fill", "file"},
    {"film.fill", "film"},
    {"folder.fill", "folder"},
    {"gamecontroller.fill", "controller"},
    {"gearshape.2.fill", "gear"},
    {"gearshape.fill", "settings"},
    {"globe", "globe"},
    {"hammer.fill", "hammer"},
    {"lock.fill", "lock"},
    {"menubar.dock.rectangle", "window"},
    {"music.note", "music"},
    {"opticaldisc.fill", "disc"},
    {"person.2.fill", "people"},
    {"person.fill", "person"},
    {"photo.fill", "image"},
    {"shippingbox.fill", "box"},
    {"sparkles", "sparkles"},
    {"square.grid.2x2.fill", "apps"},
    {"square.stack.3d.up.fill", "sources"},
    {"textformat", "text"},
    {"trash.fill", "trash"},
    {"tray.full.fill", "tray"},
});
static_assert(std::ranges::is_sorted(symbols, {}, &Symbol::symbol));

/// The hot orange of what may go, in both appearances.
const QColor hotOrange = QColor::fromRgb(0xFF7A45);

} // namespace

QString MapLooks::iconOf(std::string_view symbol) {
    const auto found = std::ranges::lower_bound(symbols, symbol, {}, &Symbol::symbol);
    return found != symbols.end() && found->symbol == symbol ? found->icon : "file";
}

QString MapLooks::toneName(MapTone tone) {
    switch (tone) {
    case MapTone::gray:
        return "faint";
    case MapTone::blue:
        return "dev";
    case MapTone::violet:
        return "memory";
    case MapTone::green:
        return "good";
    case MapTone::red:
        return "bad";
    case MapTone::orange:
        return "accent";
    case MapTone::yellow:
        return "emberFill";
    case MapTone::sky:
        return "info";
    }
    return "faint";
}

QColor MapLooks::toneOf(const Palette& palette, MapTone tone) {
    switch (tone) {
    case MapTone::gray:
        return palette.faint;
    case MapTone::blue:
        return palette.dev;
    case MapTone::violet:
        return palette.memory;
    case MapTone::green:
        return palette.good;
    case MapTone::red:
        return palette.bad;
    case MapTone::orange:
        return palette.accent;
    case MapTone::yellow:
        return palette.emberFill;
    case MapTone::sky:
        return palette.info;
    }
    return palette.faint;
}

QString MapLooks::bucketToneName(StorageBucket bucket) {
    switch (bucket) {
    case StorageBucket::dependencies:
        return "emberFill";
    case StorageBucket::caches:
        return "accent";
    case StorageBucket::git:
        return "dev";
    case StorageBucket::files:
        return "faint";
    }
    return "faint";
}

QColor MapLooks::bucketFill(const Palette& palette, StorageBucket bucket) {
    // Warm may go, cool stays; and what may go is stronger.
    const double strong = palette.dark ? 0.34 : 0.30;
    const double weak = palette.dark ? 0.22 : 0.18;
    switch (bucket) {
    case StorageBucket::dependencies:
        return mixed(palette.surface, palette.emberFill, strong);
    case StorageBucket::caches:
        return mixed(palette.surface, hotOrange, strong);
    case StorageBucket::git:
        return mixed(palette.surface, palette.dev, weak);
    case StorageBucket::files:
        return mixed(palette.surface, palette.faint, weak);
    }
    return palette.surface;
}

} // namespace varnet
