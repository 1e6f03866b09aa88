#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <optional>
#include <set>
#include <string>

namespace varnet::vectors {

using Json = nlohmann::json;

/// How closely an answer has to meet its expectation. Integers, texts and flags always compare exactly,
/// except that UUIDs do not mind their case. {"any": true} accepts anything. An expectation that is null or
/// lacks a key stands for null and for an empty list, object or text.
struct Rules {
    /// Allowed deviation of a double, as a share of the larger of its expectation and the floor.
    double relative = 1e-9;
    double floor = 0;
    /// Allowed deviation of a double in itself, beside that share.
    double absolute = 0;
    /// Every number compares exactly, not only those under the date keys.
    bool exactNumbers = false;
    /// Objects must have the very same keys.
    bool exactKeys = false;
    /// A number or flag may be 0 or false where the expectation lacks its key.
    bool absentMayBeZero = false;
    /// Keys whose numbers, and those in what they hold, are moments and compare exactly.
    std::set<std::string, std::less<>> dateKeys{"at",        "date",      "endingAt",   "exitedAt",
                                                "firstSeen", "lastSeen",  "measuredAt", "now",
                                                "since",     "startedAt", "unlocked"};
    /// Keys whose lists are sets.
    std::set<std::string, std::less<>> setKeys{};
};

/// Where an answer first differs.
struct Difference {
    std::string path; ///< such as "[2].groups[0].name"; empty: the whole answer
    std::string expected;
    std::string got;
};

std::optional<Difference> firstDifference(const Json& expected, const Json& got, const Rules& rules);

/// The double that a JSON value stands for: a number, or "nan", "inf", "-inf". Empty for anything else.
std::optional<double> numberOf(const Json& json);

} // namespace varnet::vectors
