#include "VarnetApp/MainViews/OverviewRows.h"

#include "VarnetApp/Components/FindingMark.h"
#include "VarnetApp/Localization/Figures.h"

#include <array>
#include <string_view>

namespace varnet {

namespace {

QString named(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// What is the same about a card whatever it reads. Tones are names of Theme's colours.
struct Card {
    std::string_view key;
    const char* icon;
    const char* tone;
    const char* label;
    const char* help;  ///< names the information button
    const char* about; ///< what the panel behind it says
    bool hasBar;
};

constexpr std::array<Card, 4> cards{{
    {"memory", "memory", "memory", "Process memory", "About process memory",
     "Memory for apps and background tasks, including data your Mac has packed smaller or temporarily put on "
     "disk. It is counted at its full size, so it can be larger than your RAM.",
     true},
    {"fans", "fan", "info", "Fans", "About fans",
     "Fan support varies by Mac. Speeds are read only; missing readings stay unavailable.", true},
    {"battery", "battery", "good", "Battery", "About the battery",
     "The charge that is left, and how long it lasts at the present pace.", true},
    {"servers", "servers", "dev", "Servers", "About servers",
     "Local development servers that are running, and the recognized tools that are at work.", false},
}};

const Card& cardOf(std::string_view key) {
    for (const Card& card : cards)
        if (card.key == key) return card;
    return cards.front();
}

const char* toneOf(GroupKind kind) {
    switch (kind) {
    case GroupKind::application:
        return "emberFill";
    case GroupKind::project:
        return "dev";
    case GroupKind::system:
    case GroupKind::unassigned:
        break;
    }
    return "faint";
}

} // namespace

std::vector<QByteArray> MetricEntry::roles() {
    return {"name", "icon", "tone", "label", "help", "about", "hasBar", "figure", "note", "fraction"};
}

QVariant MetricEntry::value(int role) const {
    const Card& card = cardOf(key);
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return card.icon;
    case 2:
        return known ? card.tone : "muted";
    case 3:
        return card.label;
    case 4:
        return card.help;
    case 5:
        return card.about;
    case 6:
        return card.hasBar;
    case 7:
        return figure;
    case 8:
        return note;
    case 9:
        return share.value_or(0);
    default:
        return {};
    }
}

std::vector<QByteArray> CategoryEntry::roles() {
    return {"label", "tone", "figure"};
}

QVariant CategoryEntry::value(int role) const {
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return key == "Apps" ? "emberFill" : key == "Dev" ? "dev" : "faint";
    case 2:
        return Figures(locale).percent(percent);
    default:
        return {};
    }
}

std::vector<QByteArray> ContributorEntry::roles() {
    return {"key", "name", "subtitle", "tone", "kind", "figure", "fraction"};
}

QVariant ContributorEntry::value(int role) const {
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return named(name);
    case 2:
        return named(subtitle);
    case 3:
        return toneOf(kind);
    case 4:
        return named(rawValue(kind));
    case 5:
        return Figures(locale).percent(percent);
    case 6:
        return fraction;
    default:
        return {};
    }
}

std::vector<QByteArray> AttentionEntry::roles() {
    return {"key", "title", "explanation", "icon", "tone"};
}

QVariant AttentionEntry::value(int role) const {
    switch (role) {
    case 0:
        return named(key);
    case 1:
        return named(title);
    case 2:
        return named(explanation);
    case 3:
        return markOf(kind).icon;
    case 4:
        return markOf(kind).tone;
    default:
        return {};
    }
}

} // namespace varnet
