#pragma once

#include "tests/vectors/Comparison.h"

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace varnet::vectors {

/// Runs one vector, given whole (name, op, input, expect or steps, fixture, ...). May throw: a vector that
/// cannot be read counts as failed.
using Check = std::function<std::optional<Difference>(const Json& vector)>;

/// A check that computes an answer from `input` and compares it with the expectation.
Check answering(std::function<Json(const Json& input)> compute, Rules rules = {});

/// What a vector expects: its `expect`, else the list of its steps' `expect`, else, where `expectIs` says
/// "regex", a pattern that the whole answer must match (handled by `answering`).
Json expectationOf(const Json& vector);

/// One per room, at namespace scope: adds the room's operations to those that the program knows.
class Room {
public:
    struct Operation {
        std::string op;
        Check check;
    };
    Room(std::initializer_list<Operation> operations);
};

/// Null for an operation that no room has registered.
const Check* findCheck(std::string_view op);

} // namespace varnet::vectors
