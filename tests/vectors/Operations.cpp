#include "tests/vectors/Operations.h"

#include <algorithm>
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

void resolve(Json& json, const Json& pool) {
    const auto replace = [&pool](Json& process) {
        if (process.is_number_integer()) process = pool.at(process.get<std::size_t>());
    };
    if (!json.is_structured()) return;
    for (const char* const key : {"process", "root"})
        if (json.contains(key)) replace(json[key]);
    for (const char* const key : {"processes", "members", "samples"})
        if (json.contains(key)) std::ranges::for_each(json[key], replace);
    for (Json& child : json)
        resolve(child, pool);
}

} // namespace

Json withoutPool(Json vector) {
    if (!vector.contains("input") || !vector["input"].is_object()) return vector;
    Json& input = vector["input"];
    const Json& own = at(input, "pool");
    const Json pool = own.is_null() ? at(at(input, "snapshot"), "processes") : own;
    if (pool.is_null()) return vector;
    resolve(input, pool);
    if (vector.contains("steps")) resolve(vector["steps"], pool);
    return vector;
}

Json expectationOf(const Json& vector) {
    if (vector.contains("expect")) return vector["expect"];
    const Json input = inputOf(vector);
    Json all = Json::array();
    for (const Json& step : input.at("steps"))
        all.push_back(step.value("expect", Json()));
    return all;
}

Check comparing(std::function<Json(const Json& input)> compute, Rules rules) {
    return [compute = std::move(compute), rules = std::move(rules)](const Json& vector) {
        const Json got = compute(inputOf(vector));
        const Json expected = expectationOf(vector);
        if (vector.value("expectIs", "") == "regex") return matchPattern(expected.get<std::string>(), got);
        return firstDifference(expected, got, rules);
    };
}

std::optional<Difference> eachStep(const Json& steps,
                                   const std::function<std::optional<Difference>(const Json& step)>& check) {
    for (std::size_t number = 0; number < steps.size(); ++number) {
        if (auto difference = check(steps[number])) {
            difference->path = "[" + std::to_string(number) + "]" + difference->path;
            return difference;
        }
    }
    return std::nullopt;
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
