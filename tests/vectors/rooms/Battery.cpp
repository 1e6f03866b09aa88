#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetCore/Battery/BatteryTracker.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

#include <stdlib.h>
#include <time.h>

namespace varnet::vectors {
namespace {

template <typename Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

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
        if (json.is_string()) {
            const auto number = numberOf(json);
            if (number)
                value.value = *number;
            else
                value.value = json.get<std::string>();
        }
        if (json.is_object()) value.value = std::make_shared<const BatteryDictionary>(readDictionary(json));
    }
    return dictionary;
}

Json written(const BatteryReading& reading) {
    return {{"date", reading.date.seconds},
            {"availability", rawValue(reading.availability)},
            {"state", rawValue(reading.state)},
            {"charge", orNull(reading.charge)},
            {"health", orNull(reading.health)},
            {"condition", rawValue(reading.condition)},
            {"cycles", orNull(reading.cycles)},
            {"fullCapacity", orNull(reading.fullCapacity)},
            {"designCapacity", orNull(reading.designCapacity)},
            {"watts", orNull(reading.watts)},
            {"temperature", orNull(reading.temperature)},
            {"minutesRemaining", orNull(reading.minutesRemaining)},
            {"minutesToFull", orNull(reading.minutesToFull)},
            {"adapterWatts", orNull(reading.adapterWatts)},
            {"lowPowerMode", reading.lowPowerMode}};
}

Json parse(const Json& input) {
    return written(BatteryReading::parse(readDictionary(at(input, "power")),
                                         readDictionary(at(input, "registry")),
                                         numberOf(at(input, "adapterWatts")), readFlag(input, "lowPowerMode"),
                                         readDate(input, "date").value_or(Date{})));
}

// Figures.

QLocale localeOfInput(const Json& input) {
    return QLocale(QString::fromStdString(readText(input, "locale")));
}

Json percent(const Json& input) {
    return BatteryDisplay::percent(numberOf(at(input, "value")), localeOfInput(input)).toStdString();
}
Json watts(const Json& input) {
    return BatteryDisplay::watts(numberOf(at(input, "value")), localeOfInput(input)).toStdString();
}
Json score(const Json& input) {
    return BatteryDisplay::score(numberOf(at(input, "value")), localeOfInput(input)).toStdString();
}
Json time(const Json& input) {
    return BatteryDisplay::time(numberOf(at(input, "value"))).toStdString();
}

// The archive. A list {"count", "firstDate", "step", "with"} stands for that many entries.

template <typename Read>
void readEntries(const Json& list, Read read) {
    if (list.is_array()) {
        for (const Json& entry : list)
            read(entry);
        return;
    }
    for (int i = 0; i < list.at("count").get<int>(); ++i) {
        Json entry = list.at("with");
        entry["date"] = list.at("firstDate").get<double>() + i * list.at("step").get<double>();
        read(entry);
    }
}

BatteryState readState(const Json& json) {
    return batteryState(readText(json, "state")).value_or(BatteryState::onBattery);
}

Uuid readUuid(const Json& json, const char* key) {
    return Uuid::fromText(readText(json, key)).value_or(Uuid{});
}

BatteryArchive readArchive(const Json& json) {
    BatteryArchive archive;
    readEntries(at(json, "points"), [&](const Json& point) {
        archive.points.push_back({*readDate(point, "date"), readNumber(point, "charge").value_or(0),
                                  readState(point), readNumber(point, "watts"), readUuid(point, "segment")});
    });
    readEntries(at(json, "health"), [&](const Json& point) {
        archive.health.push_back({*readDate(point, "date"), readNumber(point, "capacity").value_or(0),
                                  readInteger<int>(point, "cycles")});
    });
    readEntries(at(json, "sessions"), [&](const Json& one) {
        BatterySession session{readUuid(one, "id"),
                               *readDate(one, "start"),
                               *readDate(one, "end"),
                               readNumber(one, "startCharge"),
                               readNumber(one, "endCharge"),
                               readNumber(one, "observedSeconds").value_or(0),
                               {}};
        for (const auto& [id, app] : at(one, "apps").items())
            session.apps[id] = {id, readText(app, "name"), readNumber(app, "scoreSeconds").value_or(0),
                                readFlag(app, "partial")};
        archive.sessions.push_back(std::move(session));
    });
    return archive;
}

Json writtenLists(const BatteryArchive& archive) {
    Json json = Json::parse(archive.encode());
    json.erase("version");
    return json;
}

Json prune(const Json& input) {
    BatteryArchive archive = readArchive(input);
    archive.prune(readDate(input, "at").value_or(Date{}));
    return writtenLists(archive);
}

/// Where the expectation counts a list instead of naming its entries, so does the answer.
std::optional<Difference> checkPrune(const Json& vector) {
    Json got = prune(vector.at("input"));
    const Json& expected = vector.at("expect");
    for (auto& [key, list] : got.items()) {
        if (!at(expected, key.c_str()).is_object()) continue;
        list = {{"count", list.size()},
                {"firstDate", list.front().at("date")},
                {"lastDate", list.back().at("date")}};
    }
    Rules rules;
    rules.relative = 1e-6;
    rules.floor = 1;
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

BatteryReading readReading(const Json& json, Date date) {
    BatteryReading reading;
    reading.date = readDate(json, "date").value_or(date);
    const std::string availability = readText(json, "availability");
    reading.availability = availability == "absent"        ? BatteryAvailability::absent
                           : availability == "unavailable" ? BatteryAvailability::unavailable
                                                           : BatteryAvailability::available;
    reading.state = readState(json);
    reading.condition = BatteryCondition::normal;
    reading.charge = readNumber(json, "charge");
    reading.health = readNumber(json, "health");
    reading.watts = readNumber(json, "watts");
    reading.cycles = readInteger<int>(json, "cycles");
    return reading;
}

Json writtenUuid(const std::optional<Uuid>& uuid) {
    return uuid ? Json(uuid->text()) : Json(nullptr);
}

Json writtenState(const BatteryTracker& tracker) {
    const auto& previous = tracker.previousReading();
    return {{"currentSessionID", writtenUuid(tracker.currentSessionID())},
            {"previousDate", tracker.previousDate() ? Json(tracker.previousDate()->seconds) : Json()},
            {"previousGroupIDs", tracker.previousGroupIDs()},
            {"segment", tracker.segment().text()},
            {"previousState", previous ? Json(rawValue(previous->state)) : Json()}};
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
    Rules rules;
    rules.relative = 1e-6;
    rules.floor = 1;
    rules.setKeys = {"previousGroupIDs"};
    std::size_t number = 0;
    for (const Json& step : vector.at("steps")) {
        const Json& expected = step.at("expect");
        Json got;
        if (readText(step, "op") == "interrupt") {
            tracker.interrupt();
        } else {
            const Json& seen = step.at("input");
            const Date now = readDate(seen, "at").value_or(Date{});
            const std::vector<ApplicationGroup> groups = readGroups(at(seen, "groups"));
            const BatteryDashboard dashboard =
                tracker.observe(readReading(at(seen, "reading"), now), groups, now);
            got["currentSessionID"] = writtenUuid(dashboard.currentSessionID);
            got["dischargeWatts"] = orNull(dashboard.dischargeWatts);
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
        auto difference = firstDifference(expectedLabels.renamed(wanted), gotLabels.renamed(got), rules);
        if (difference) {
            difference->path = "step " + std::to_string(number) + " " + difference->path;
            return difference;
        }
        ++number;
    }
    return std::nullopt;
}

const Room room{
    {"BatteryReading.parse", answering(parse)}, {"BatteryDisplay.percent", answering(percent)},
    {"BatteryDisplay.watts", answering(watts)}, {"BatteryDisplay.score", answering(score)},
    {"BatteryDisplay.time", answering(time)},   {"BatteryArchive.prune", checkPrune},
    {"BatteryTracker", checkTracker},
};

} // namespace
} // namespace varnet::vectors
