#pragma once

#include "VarnetCore/Flame/Roast.h"
#include "VarnetCore/Flame/RoastSubject.h"
#include "VarnetCore/Flame/SustainedPresentation.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// Whether a line may be replaced for freshness: only while somebody can read it.
enum class Rotation { held, allowed };

/// Turns each snapshot into a line of commentary: decides on a subject, holds it steady, keeps a headline up
/// long enough to be read, and repeats no line before its bank is used up. A plain value.
class RoastEngine {
public:
    /// Seed, place, swap and last line of each bank's deck, by key.
    using Choices = std::map<std::string, std::int64_t>;

    Roast make(const MonitorSnapshot& snapshot, Rotation rotation);

    const Choices& choices() const noexcept { return choices_; }
    void setChoices(Choices choices) { choices_ = std::move(choices); }

    /// The next line of the topic's deck.
    std::string_view draw(std::string_view topic);
    /// The order of a deck in one round.
    static std::vector<std::size_t> order(std::int64_t seed, std::int64_t round, std::size_t size);

    const std::optional<RoastContext>& displayed() const noexcept { return displayed_; }
    const SustainedPresentation<RoastContext>& presentation() const noexcept { return presentation_; }

private:
    bool mustReplace(const RoastContext& raw, const MonitorSnapshot& snapshot, bool gap) const;
    bool wantsNewLine(const RoastContext& chosen, const RoastContext& raw, bool atOnce, Rotation rotation,
                      Date now) const;
    void drawHeadline(const RoastContext& chosen, const MonitorSnapshot& snapshot);

    Choices choices_;
    SustainedPresentation<RoastContext> presentation_;
    std::optional<RoastContext> displayed_; ///< subject of the headline
    std::string headline_;
    Date headlineDate_ = Date::distantPast();
    std::string headlineID_;
    std::optional<Date> lastDate_; ///< newest snapshot
    std::optional<Roast> previousRoast_;
};

} // namespace varnet
