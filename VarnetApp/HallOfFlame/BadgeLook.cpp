#include "VarnetApp/HallOfFlame/BadgeLook.h"

#include "VarnetCore/Hall/FlameBadge.h"

#include <algorithm>
#include <array>

namespace varnet {

namespace {

struct Symbol {
    std::string_view name;
    const char* icon;
};

constexpr std::array<Symbol, 20> symbols{{
    {"flame", "flame"},       {"magnifyingglass", "search"},
    {"moon.zzz", "moon"},     {"sparkles", "sparkles"},
    {"crown", "crown"},       {"hourglass", "hourglass"},
    {"leaf", "leaf"},         {"house", "home"},
    {"backpack", "backpack"}, {"suitcase.rolling", "suitcase"},
    {"shippingbox", "box"},   {"cup.and.saucer", "cup"},
    {"sparkle", "sparkle"},   {"book.closed", "book"},
    {"calendar", "calendar"}, {"medal", "medal"},
    {"person.3", "people"},   {"theatermasks", "masks"},
    {"airplane", "plane"},    {"square.on.square", "duplicate"},
}};

} // namespace

QString BadgeLook::icon(const FlameBadge& badge) {
    const auto* const found = std::ranges::find(symbols, badge.symbol, &Symbol::name);
    return found == symbols.end() ? QString() : QString(found->icon);
}

QString BadgeLook::tone(const FlameBadge& badge) {
    if (badge.tier == "Rare") return QStringLiteral("info");
    return badge.tier == "Legendary" ? QStringLiteral("memory") : QStringLiteral("emberFill");
}

QString BadgeLook::ink(const FlameBadge& badge) {
    return badge.tier == "Starter" ? QStringLiteral("ember") : tone(badge);
}

} // namespace varnet
