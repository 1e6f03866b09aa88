#include "tests/vectors/Operations.h"

#include <map>
#include <regex>
#include <utility>

namespace varnet::vectors {
namespace {

std::map<std::string, Check, std::less<>>& knownChecks() {
    static std::map<std::string, Check, std::less<>> checks;
    return checks;
}

/// A vector may hold its steps beside the input instead of inside it.
Json inputOf(const Json& vector) {
    Json input = vector.value("input", Json::object());
    if (vector.contains("steps") && input.is_object() && !input.contains("steps")) {
        input["steps"] = vector["steps"];
    }
    return input;
}

std::optional<Difference> matchPattern(const std::string& pattern, const Json& got) {
    const bool matches = got.is_string() && std::regex_match(got.get<std::string>(), std::regex(pattern));
    if (matches) return std::nullopt;
    return Difference{"", "a match of " + pattern, got.dump(-1, ' ', false, Json::error_handler_t::replace)};
}

} // namespace

Json expectationOf(const Json& vector) {
    if (vector.contains("expect")) return vector["expect"];
    const Json input = inputOf(vector);
    Json all = Json::array();
    for (const Json& step : input.at("steps"))
        all.push_back(step.value("expect", Json()));
    return all;
}

Check answering(std::function<Json(const Json& input)> compute, Rules rules) {
    return [compute = std::move(compute), rules = std::move(rules)](const Json& vector) {
        const Json got = compute(inputOf(vector));
        const Json expected = expectationOf(vector);
        if (vector.value("expectIs", "") == "regex") return matchPattern(expected.get<std::string>(), got);
        return firstDifference(expected, got, rules);
    };
}

Room::Room(std::initializer_list<Operation> operations) {
    for (const Operation& operation : operations)
        knownChecks()[operation.op] = operation.check;
}

const Check* findCheck(std::string_view op) {
    const auto found = knownChecks().find(op);
    return found == knownChecks().end() ? nullptr : &found->second;
}

} // namespace varnet::vectors
