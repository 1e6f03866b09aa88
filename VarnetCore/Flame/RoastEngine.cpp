#include "VarnetCore/Flame/RoastEngine.h"

#include "VarnetCore/Flame/RoastLibrary.h"
#include "VarnetCore/Flame/RoastText.h"
#include "VarnetCore/Flame/RoastTopic.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <utility>

namespace varnet {

namespace {

constexpr std::string_view deckPrefix = "deck-v2:";
constexpr std::int64_t largestSeed = 2'147'483'647;
constexpr std::string_view unknownTopic = "unknown";

bool hasGroup(const MonitorSnapshot& snapshot, const std::string& id) {
    return std::ranges::find(snapshot.groups, id, &ApplicationGroup::id) != snapshot.groups.end();
}

bool hasFinding(const MonitorSnapshot& snapshot, const std::string& id) {
    return std::ranges::find(snapshot.findings, id, &Finding::id) != snapshot.findings.end();
}

/// What the subject was about is no longer there.
bool isGone(const RoastContext& context, const MonitorSnapshot& snapshot) {
    return (context.groupID && !hasGroup(snapshot, *context.groupID)) ||
           (context.findingID && !hasFinding(snapshot, *context.findingID));
}

std::int64_t newSeed() {
    std::random_device device;
    return std::uniform_int_distribution<std::int64_t>(1, largestSeed)(device);
}

std::string filledIn(std::string_view line, const std::string& subject) {
    std::string text(line);
    for (std::size_t at = text.find(RoastLibrary::placeholder); at != std::string::npos;
         at = text.find(RoastLibrary::placeholder, at + subject.size()))
        text.replace(at, RoastLibrary::placeholder.size(), subject);
    return text;
}

} // namespace

Roast RoastEngine::make(const MonitorSnapshot& snapshot, Rotation rotation) {
    const Date now = snapshot.date;
    const bool gap = lastDate_ && now - *lastDate_ > FlameTiming::maximumSampleGap;
    if (gap) presentation_ = {};
    const RoastContext raw = RoastSubject::choose(snapshot, presentation_.value);
    if (lastDate_ && now <= *lastDate_ && raw.topic != unknownTopic && previousRoast_ &&
        previousRoast_->topic != unknownTopic)
        return *previousRoast_;
    lastDate_ = now;
    const RoastContext presented = presentation_.update(raw, roastTopic(raw.topic).severity, now);

    const bool replace = mustReplace(raw, snapshot, gap);
    const int severity = roastTopic(presented.topic).severity;
    const int displayedSeverity = displayed_ ? roastTopic(displayed_->topic).severity : -1;
    const bool urgent = severity >= FlameTiming::urgentSeverity && severity > displayedSeverity;
    const RoastContext& chosen = replace || isGone(presented, snapshot) ? raw : presented;
    if (wantsNewLine(chosen, raw, replace || urgent, rotation, now)) drawHeadline(chosen, snapshot);

    const RoastContext& shown = displayed_ ? *displayed_ : chosen;
    Roast roast(headlineID_, headline_, RoastText::explanation(shown, raw, snapshot),
                RoastText::observations(displayed_, snapshot), roastTopic(presented.topic).mood, shown.topic);
    roast.characterTopic = presented.topic;
    previousRoast_ = roast;
    return roast;
}

bool RoastEngine::mustReplace(const RoastContext& raw, const MonitorSnapshot& snapshot, bool gap) const {
    return !displayed_ || raw.topic == unknownTopic || displayed_->topic == unknownTopic || gap ||
           isGone(*displayed_, snapshot);
}

bool RoastEngine::wantsNewLine(const RoastContext& chosen, const RoastContext& raw, bool atOnce,
                               Rotation rotation, Date now) const {
    const double elapsed = now - headlineDate_;
    if (displayed_ == chosen) {
        return rotation == Rotation::allowed && raw == *displayed_ &&
               elapsed >= FlameTiming::headlineRotation;
    }
    return atOnce || elapsed >= FlameTiming::headlineMinimum;
}

void RoastEngine::drawHeadline(const RoastContext& chosen, const MonitorSnapshot& snapshot) {
    displayed_ = chosen;
    const std::string_view line = draw(chosen.topic);
    headline_ = filledIn(line, RoastText::subject(chosen, snapshot));
    headlineDate_ = snapshot.date;
    const auto seconds = static_cast<std::int64_t>(std::trunc(snapshot.date.sinceUnixEpoch()));
    headlineID_ = chosen.topic + ":" + std::to_string(seconds) + ":" + std::string(line);
}

std::vector<std::size_t> RoastEngine::order(std::int64_t seed, std::int64_t round, std::size_t size) {
    std::vector<std::size_t> order(size);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::uint64_t state =
        static_cast<std::uint64_t>(seed) + static_cast<std::uint64_t>(round) * 0x9e3779b97f4a7c15U;
    for (std::size_t i = size; i-- > 1;) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        std::swap(order[i], order[(state >> 32U) % (i + 1)]);
    }
    return order;
}

std::string_view RoastEngine::draw(std::string_view topic) {
    const std::string_view bank = RoastLibrary::bankFor(topic);
    const RoastLibrary::Bank& lines = RoastLibrary::banks().find(bank)->second;
    const std::string prefix = std::string(deckPrefix) + std::string(bank) + ":";
    const auto stored = [&](const char* name) {
        const auto found = choices_.find(prefix + name);
        return found == choices_.end() ? std::nullopt : std::optional(found->second);
    };
    std::int64_t seed = stored("seed").value_or(0);
    if (seed < 1 || seed > largestSeed) seed = choices_[prefix + "seed"] = newSeed();
    const auto size = static_cast<std::int64_t>(lines.size());
    const std::int64_t cursor = std::clamp(stored("cursor").value_or(0), std::int64_t{0},
                                           std::numeric_limits<std::int64_t>::max() - size);
    const std::int64_t position = cursor % size;
    std::vector<std::size_t> deck = order(seed, cursor / size, lines.size());
    if (position == 0) {
        const auto last = stored("last");
        choices_[prefix + "swap"] = last && *last == static_cast<std::int64_t>(deck.front()) ? 1 : 0;
    }
    if (stored("swap") == 1 && deck.size() > 1) std::swap(deck[0], deck[1]);
    const std::size_t index = deck[static_cast<std::size_t>(position)];
    choices_[prefix + "cursor"] = cursor + 1;
    choices_[prefix + "last"] = static_cast<std::int64_t>(index);
    std::erase_if(choices_, [](const auto& entry) { return !entry.first.starts_with(deckPrefix); });
    return lines[index];
}

} // namespace varnet
