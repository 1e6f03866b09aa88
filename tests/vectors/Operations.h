#pragma once

#include "tests/vectors/RecordJson.h"

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
Check comparing(std::function<Json(const Json& input)> compute, Rules rules = {});

template <typename Compute>
Check answering(Compute compute, Rules rules = {}) {
    return comparing([compute](const Json& input) { return written(compute(input)); }, std::move(rules));
}

/// What a record, read from the whole input, answers.
template <typename Answer, typename Record>
Check asking(Answer (Record::*member)() const, Rules rules = {}) {
    return answering([member](const Json& input) { return (read<Record>(input).*member)(); },
                     std::move(rules));
}
template <typename Answer, typename Record>
Check asking(Answer (Record::*member)() const noexcept, Rules rules = {}) {
    return answering([member](const Json& input) { return (read<Record>(input).*member)(); },
                     std::move(rules));
}

/// The first difference that any step finds, its path behind the step's number.
std::optional<Difference> eachStep(const Json& steps,
                                   const std::function<std::optional<Difference>(const Json& step)>& check);

/// What a vector expects: its `expect`, else the list of its steps' `expect`, else, where `expectIs` says
/// "regex", a pattern that the whole answer must match (handled by `comparing`).
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

/// The vector with each process that its input gives as a number replaced by what stands there in the input's
/// pool, or in its snapshot.
Json withoutPool(Json vector);

} // namespace varnet::vectors
