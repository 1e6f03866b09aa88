#include "VarnetCore/Hall/FlameBadge.h"

#include <algorithm>

namespace varnet {

namespace {

// Seconds, counts, flags (a target of 1) and bytes in decimal gigabytes, by the metric.
constexpr std::array<FlameBadge, FlameBadge::count> badges{{
    {"first-light", "First light", "flame", "Observe your Mac for one minute.",
     "The investigation is officially none of your apps’ business.", "seconds", 60, "Starter"},
    {"detective", "Private eye", "magnifyingglass", "Inspect an app, a project and a system process.",
     "Everyone has a file now.", "inspections", 3, "Starter"},
    {"ghost", "Ghostbuster", "moon.zzz", "Confirm the stop of one server marked Possibly forgotten.",
     "One less ghost in the machine.", "ghosts", 1, "Starter"},
    {"ghost-patrol", "Ghost patrol", "sparkles", "Confirm stops for 5 different forgotten servers.",
     "Your localhost has a neighbourhood watch.", "ghosts", 5, "Rare"},
    {"ghost-legend", "Afterlife support", "crown", "Confirm stops for 25 different forgotten servers.",
     "Have you tried turning the afterlife off?", "ghosts", 25, "Legendary"},
    {"ancient", "Ancient history", "hourglass",
     "Stop a forgotten server that has been running for at least 24 hours.",
     "It was about to start paying rent.", "ancient", 1, "Rare"},
    {"spring", "Spring cleaning", "leaf", "Complete one reviewed folder move to Trash.",
     "Your agents packed. You finally unpacked.", "cleanups", 1, "Starter"},
    {"tidy", "House proud", "house", "Complete reviewed cleanups on 3 different days.",
     "A floor you can actually see. Digitally.", "cleanupDays", 3, "Rare"},
    {"light-pack", "Travelling light", "backpack", "Move 1 GB of reviewed folders to Trash in total.",
     "Emotional baggage sold separately.", "trashBytes", 1'000'000'000, "Starter"},
    {"baggage", "Baggage claim", "suitcase.rolling", "Move 10 GB of reviewed folders to Trash in total.",
     "Your node_modules had a checked bag.", "trashBytes", 10'000'000'000, "Rare"},
    {"big-move", "Moving day", "shippingbox", "Move 25 GB of reviewed folders to Trash in total.",
     "Your dependencies needed their own postcode.", "trashBytes", 25'000'000'000, "Legendary"},
    {"quiet", "A quiet moment", "cup.and.saucer",
     "Observe 10 continuous minutes below 15% whole Mac CPU with nominal thermal pressure.",
     "Nothing’s on fire. We checked.", "quietBest", 600, "Starter"},
    {"zen", "Zen master", "sparkle",
     "Observe one continuous hour below 15% CPU with nominal thermal pressure.",
     "Even the fan has a work-life balance.", "quietBest", 3'600, "Legendary"},
    {"field-notes", "Field notes", "book.closed", "Monitor at least 10 minutes on 3 different days.",
     "Three days. Several opinions.", "days", 3, "Starter"},
    {"regular", "Usual suspect", "calendar",
     "Monitor at least 10 minutes on 7 different days. No streak needed.", "The flame knows your order.",
     "days", 7, "Rare"},
    {"resident", "Resident hothead", "medal",
     "Monitor at least 10 minutes on 30 different days. No streak needed.", "You and your Mac have history.",
     "days", 30, "Legendary"},
    {"team", "Group project", "person.3",
     "Observe local processes with verified origins from 3 different supported tools.",
     "Everyone brought a plus-one.", "tools", 3, "Rare"},
    {"cast", "The full cast", "theatermasks",
     "Observe verified local process origins from 5 different supported tools.",
     "Your CPU would like fewer collaborators.", "tools", 5, "Legendary"},
    {"takeoff", "Ground control", "airplane",
     "Witness a confirmed fan takeoff state: 85% of a valid maximum for 10 seconds.",
     "A souvenir, not a challenge. Don’t heat your Mac for this.", "takeoff", 1, "Rare"},
    {"double", "Seeing double", "square.on.square", "Observe a Possible duplicate server finding.",
     "One localhost. A suspicious number of twins.", "duplicate", 1, "Starter"},
}};

} // namespace

const std::array<FlameBadge, FlameBadge::count>& FlameBadge::all() noexcept {
    return badges;
}

const FlameBadge* FlameBadge::named(std::string_view id) noexcept {
    const auto* const found = std::ranges::find(badges, id, &FlameBadge::id);
    return found == badges.end() ? nullptr : found;
}

double progress(const FlameArchive& archive, const FlameBadge& badge) {
    return std::clamp(archive.metric(badge.metric) / badge.target, 0.0, 1.0);
}

bool isEarned(const FlameArchive& archive, const FlameBadge& badge) {
    return archive.unlocked.contains(std::string(badge.id));
}

} // namespace varnet
