#include "tests/vectors/Comparison.h"

#include "VarnetCore/Base/Uuid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace varnet::vectors {
namespace {

constexpr std::size_t longestShown = 1500; // characters of a value in a report

std::string shown(const Json& json) {
    std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > longestShown) text = text.substr(0, longestShown) + "...";
    return text;
}

bool isNothing(const Json& json) {
    return json.is_null() || ((json.is_string() || json.is_array() || json.is_object()) && json.empty()) ||
           (json.is_string() && json.get_ref<const std::string&>().empty());
}

bool isZero(const Json& json) {
    return json == Json(false) || (json.is_number() && json.get<double>() == 0);
}

bool acceptsAnything(const Json& expected) {
    return expected.is_object() && expected.size() == 1 && expected.value("any", false);
}

bool sameInteger(const Json& a, const Json& b) {
    const auto visit = [](const Json& json, auto&& then) {
        return json.is_number_unsigned() ? then(json.get<std::uint64_t>()) : then(json.get<std::int64_t>());
    };
    return visit(a, [&](auto x) { return visit(b, [x](auto y) { return std::cmp_equal(x, y); }); });
}

class Comparer {
public:
    explicit Comparer(const Rules& rules) : rules_(rules) {}

    std::optional<Difference> compare(const Json& expected, const Json& got, bool exactNumber) {
        if (acceptsAnything(expected) || (isNothing(expected) && isNothing(got))) return std::nullopt;
        if (expected.is_object() && got.is_object()) return compareObjects(expected, got, exactNumber);
        if (expected.is_array() && got.is_array()) return compareLists(expected, got, exactNumber);
        if (sameValue(expected, got, exactNumber)) return std::nullopt;
        return Difference{path_, shown(expected), shown(got)};
    }

private:
    std::optional<Difference> compareObjects(const Json& expected, const Json& got, bool exactNumber) {
        std::set<std::string> keys;
        for (const auto& [key, value] : expected.items())
            keys.insert(key);
        for (const auto& [key, value] : got.items())
            keys.insert(key);
        for (const std::string& key : keys) {
            const bool inExpected = expected.contains(key);
            const bool inGot = got.contains(key);
            const Json& expectedValue = inExpected ? expected[key] : nothing_;
            const Json& gotValue = inGot ? got[key] : nothing_;
            const Step step(*this, '.' + key);
            if (rules_.exactKeys && inExpected != inGot) {
                return Difference{path_, inExpected ? shown(expectedValue) : "no such key",
                                  inGot ? shown(gotValue) : "no such key"};
            }
            if (!inExpected && rules_.absentMayBeZero && isZero(gotValue)) continue;
            const bool exact = exactNumber || rules_.dateKeys.contains(key);
            auto difference = rules_.setKeys.contains(key) && expectedValue.is_array() && gotValue.is_array()
                                  ? compareSets(expectedValue, gotValue, exact)
                                  : compare(expectedValue, gotValue, exact);
            if (difference) return difference;
        }
        return std::nullopt;
    }

    std::optional<Difference> compareLists(const Json& expected, const Json& got, bool exactNumber) {
        for (std::size_t at = 0; at < std::max(expected.size(), got.size()); ++at) {
            const Step step(*this, '[' + std::to_string(at) + ']');
            if (at >= expected.size()) return Difference{path_, "no such element", shown(got[at])};
            if (at >= got.size()) return Difference{path_, shown(expected[at]), "no such element"};
            if (auto difference = compare(expected[at], got[at], exactNumber)) return difference;
        }
        return std::nullopt;
    }

    std::optional<Difference> compareSets(const Json& expected, const Json& got, bool exactNumber) {
        std::vector<Json> left(got.begin(), got.end());
        for (const Json& element : expected) {
            const auto match = std::find_if(left.begin(), left.end(), [&](const Json& other) {
                return !compare(element, other, exactNumber).has_value();
            });
            if (match == left.end()) return Difference{path_, shown(element) + " in the set", shown(got)};
            left.erase(match);
        }
        if (left.empty()) return std::nullopt;
        return Difference{path_, "no such element", shown(left.front())};
    }

    bool sameValue(const Json& expected, const Json& got, bool exactNumber) const {
        if (expected.is_number_integer() && got.is_number_integer()) return sameInteger(expected, got);
        if (got.is_number()) {
            const auto number = numberOf(expected);
            return number && sameNumber(*number, got.get<double>(), exactNumber || rules_.exactNumbers);
        }
        if (expected.is_string() && got.is_string()) {
            const auto& a = expected.get_ref<const std::string&>();
            const auto& b = got.get_ref<const std::string&>();
            const auto uuid = Uuid::fromText(a);
            return a == b || (uuid && uuid == Uuid::fromText(b));
        }
        return expected == got;
    }

    bool sameNumber(double expected, double got, bool exact) const {
        if (expected == got || (std::isnan(expected) && std::isnan(got))) return true;
        if (exact || !std::isfinite(expected) || !std::isfinite(got)) return false;
        const double share = rules_.relative * std::max(rules_.floor, std::abs(expected));
        return std::abs(expected - got) <= std::max(share, rules_.absolute);
    }

    /// Lengthens the path for as long as it lives.
    class Step {
    public:
        Step(Comparer& comparer, const std::string& piece)
            : path_(comparer.path_), length_(comparer.path_.size()) {
            path_ += piece;
        }
        ~Step() { path_.resize(length_); }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        std::string& path_;
        const std::size_t length_;
    };

    const Rules& rules_;
    const Json nothing_;
    std::string path_;
};

} // namespace

std::optional<double> numberOf(const Json& json) {
    if (json.is_number()) return json.get<double>();
    if (json == "nan") return std::numeric_limits<double>::quiet_NaN();
    if (json == "inf") return std::numeric_limits<double>::infinity();
    if (json == "-inf") return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

std::optional<Difference> firstDifference(const Json& expected, const Json& got, const Rules& rules) {
    return Comparer(rules).compare(expected, got, false);
}

} // namespace varnet::vectors
