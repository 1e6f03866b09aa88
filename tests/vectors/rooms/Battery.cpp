#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetCore/Battery/BatteryTracker.h"
#include "tests/vectors/Operations.h"

#include <stdlib.h>
#include <time.h>

namespace varnet::vectors {

template <>
inline constexpr auto lastCase<BatteryAvailability> = BatteryAvailability::absent;
template <>
inline constexpr auto lastCase<BatteryState> = BatteryState::pluggedIn;
template <>
inline constexpr auto lastCase<BatteryCondition> = BatteryCondition::unknown;

VARNET_RECORD(BatteryReading, date, availability, state, charge, health, condition, cycles, fullCapacity,
              designCapacity, watts, temperature, minutesRemaining, minutesToFull, adapterWatts, lowPowerMode)
VARNET_RECORD(BatteryPoint, date, charge, state, watts, segment)
VARNET_RECORD(BatteryHealthPoint, date, capacity, cycles)
VARNET_RECORD(BatteryAppImpact, name, scoreSeconds, partial)
VARNET_RECORD(BatterySession, id, start, end, startCharge, endCharge, observedSeconds, apps)

template <>
inline void makeSparse(BatteryReading& reading) {
    reading.availability = BatteryAvailability::available;
    reading.state = BatteryState::onBattery;
    reading.condition = BatteryCondition::normal;
}
template <>
inline void makeSparse(BatteryPoint& point) {
    point.state = BatteryState::onBattery;
}

namespace {

// Readings.

BatteryDictionary readDictionary(const Json& object) {
    BatteryDictionary dictionary;
    for (const auto& [key, json] : object.items()) {
        BatteryValue& value = dictionary[key];
        if (json.is_boolean()) value.value = json.get<bool>();
        if (json.is_number_unsigned())
            value.value = json.get<std::uint64_t>();
        else if (json.is_number_integer())
            value.value = json.get<std::int64_t>();
        else if (json.is_number())
            value.value = json.get<double>();
        if (json.is_string()) value.value = json.get<std::string>();
        if (const auto number = numberOf(json); number && json.is_string()) value.value = *number;
        if (json.is_object()) value.value = std::make_shared<const BatteryDictionary>(readDictionary(json));
    }
    return dictionary;
}

BatteryReading parse(const Json& input) {
    return BatteryReading::parse(readDictionary(at(input, "power")), readDictionary(at(input, "registry")),
                                 numberOf(at(input, "adapterWatts")), readFlag(input, "lowPowerMode"),
                                 readDate(input, "date"));
}

// Figures.

Check figure(QString (*display)(std::optional<double>, const QLocale&)) {
    return answering([display](const Json& input) {
        const QLocale locale(QString::fromStdString(readText(input, "locale")));
        return display(numberOf(at(input, "value")), locale).toStdString();
    });
}

std::string time(const Json& input) {
    return BatteryDisplay::time(numberOf(at(input, "value"))).toStdString();
}

// The archive. A list {"count", "firstDate", "step", "with"} stands for that many entries.

template <typename Entry>
std::vector<Entry> readEntries(const Json& list) {
    if (!list.is_object()) return read<std::vector<Entry>>(list);
    std::vector<Entry> entries;
    for (int i = 0; i < list.at("count").get<int>(); ++i) {
        entries.push_back(read<Entry>(list, "with"));
        entries.back().date = {list.at("firstDate").get<double>() + i * list.at("step").get<double>()};
    }
    return entries;
}

BatteryArchive readArchive(const Json& json) {
    BatteryArchive archive;
    archive.points = readEntries<BatteryPoint>(at(json, "points"));
    archive.health = readEntries<BatteryHealthPoint>(at(json, "health"));
    archive.sessions = read<std::vector<BatterySession>>(json, "sessions");
    for (BatterySession& session : archive.sessions)
        for (auto& [id, impact] : session.apps)
            impact.id = id;
    return archive;
}

/// How closely batteries compare.
const Rules rules{.relative = 1e-6,
                  .floor = 1,
                  .dateKeys = {"date", "start", "end", "firstDate", "lastDate", "previousDate"},
                  .setKeys = {"previousGroupIDs"}};

Json writtenLists(const BatteryArchive& archive) {
    Json json = Json::parse(archive.encode());
    json.erase("version");
    return json;
}

/// Where the expectation counts a list instead of naming its entries, so does the answer.
std::optional<Difference> checkPrune(const Json& vector) {
    BatteryArchive archive = readArchive(vector.at("input"));
    archive.prune(readDate(vector.at("input"), "at"));
    Json got = writtenLists(archive);
    const Json& expected = vector.at("expect");
    for (auto& [key, list] : got.items()) {
        if (!at(expected, key.c_str()).is_object()) continue;
        list = {{"count", list.size()},
                {"firstDate", list.front().at("date")},
                {"lastDate", list.back().at("date")}};
    }
    return firstDifference(expected, got, rules);
}

// The tracker.

/// Identifiers drawn at random, renamed in the order in which they are met.
class Labels {
public:
    Json renamed(const Json& json) {
        if (json.is_string()) {
            const std::string text = json.get<std::string>();
            const bool label = text.starts_with('#') || Uuid::fromText(text).has_value();
            if (!label) return json;
            return "#" + std::to_string(names_.emplace(text, names_.size()).first->second);
        }
        if (!json.is_structured()) return json;
        Json copy = json;
        for (auto& [key, child] : copy.items())
            child = renamed(child);
        return copy;
    }

private:
    std::map<std::string, std::size_t> names_;
};

Json writtenState(const BatteryTracker& tracker) {
    const auto& previous = tracker.previousReading();
    return {{"currentSessionID", written(tracker.currentSessionID())},
            {"previousDate", written(tracker.previousDate())},
            {"previousGroupIDs", tracker.previousGroupIDs()},
            {"segment", tracker.segment().text()},
            {"previousState", previous ? written(previous->state) : Json()}};
}

/// The user's zone for as long as this lives.
class Zone {
public:
    explicit Zone(const std::string& name) {
        setenv("TZ", name.c_str(), 1);
        tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;
    ~Zone() {
        unsetenv("TZ");
        tzset();
    }
};

std::optional<Difference> checkTracker(const Json& vector) {
    const Json& input = vector.at("input");
    const Zone zone(readText(input, "timezone"));
    BatteryTracker tracker(readArchive(at(input, "archive")));
    Json before = writtenLists(tracker.archive());
    Labels expectedLabels;
    Labels gotLabels;
    return eachStep(vector.at("steps"), [&](const Json& step) -> std::optional<Difference> {
        const Json& expected = step.at("expect");
        Json got;
        if (readText(step, "op") == "interrupt") {
            tracker.interrupt();
        } else {
            const Json& seen = step.at("input");
            const Date now = readDate(seen, "at");
            auto reading = read<BatteryReading>(seen, "reading");
            if (at(at(seen, "reading"), "date").is_null()) reading.date = now;
            const BatteryDashboard dashboard =
                tracker.observe(reading, read<std::vector<ApplicationGroup>>(seen, "groups"), now);
            got["currentSessionID"] = written(dashboard.currentSessionID);
            got["dischargeWatts"] = written(dashboard.dischargeWatts);
        }
        got["tracker"] = writtenState(tracker);
        // Lists that the expectation does not name stay as they were.
        Json lists = writtenLists(tracker.archive());
        Json wanted = expected;
        for (const auto& [key, list] : lists.items())
            if (!wanted["archive"].contains(key)) wanted["archive"][key] = before.at(key);
        before = lists;
        for (const auto& [key, list] : lists.items()) {
            if (expected.at("archive").contains(key)) continue;
            if (const auto moved = firstDifference(wanted["archive"][key], list, rules)) return moved;
            wanted["archive"].erase(key);
            before[key] = list;
        }
        got["archive"] = Json::object();
        for (const auto& [key, list] : expected.at("archive").items())
            got["archive"][key] = lists.at(key);
        return firstDifference(expectedLabels.renamed(wanted), gotLabels.renamed(got), rules);
    });
}

const Room room{
    {"BatteryReading.parse", answering(parse)},
    {"BatteryDisplay.percent", figure(BatteryDisplay::percent)},
    {"BatteryDisplay.watts", figure(BatteryDisplay::watts)},
    {"BatteryDisplay.score", figure(BatteryDisplay::score)},
    {"BatteryDisplay.time", answering(time)},
    {"BatteryArchive.prune", checkPrune},
    {"BatteryTracker", checkTracker},
};

} // namespace
} // namespace varnet::vectors
