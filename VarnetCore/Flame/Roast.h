#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <string>
#include <vector>

namespace varnet {

/// One line of the flame's commentary with what stands behind it.
struct Roast {
    std::string id;                        ///< changes exactly when a new line is drawn
    std::string headline;                  ///< the line
    std::string explanation;               ///< one plain sentence
    std::vector<std::string> observations; ///< at most three short facts
    MascotMood mood = MascotMood::unknown;
    std::string topic;          ///< what the headline is about
    std::string characterTopic; ///< what the face is about; may run ahead of the headline

    Roast() = default;
    Roast(std::string roastID, std::string line, std::string plainly, std::vector<std::string> facts,
          MascotMood feeling, const std::string& subject)
        : id(std::move(roastID)), headline(std::move(line)), explanation(std::move(plainly)),
          observations(std::move(facts)), mood(feeling), topic(subject), characterTopic(subject) {}

    /// What is shown before anything is measured.
    static Roast start() {
        return {"initial",
                "Let me investigate this shit.",
                "Finding your apps, agents and development servers.",
                {},
                MascotMood::unknown,
                "unknown"};
    }

    friend bool operator==(const Roast&, const Roast&) = default;
};

} // namespace varnet
