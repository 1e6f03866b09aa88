// The way back from the service's records.

#include "VarnetCore/Cloud/CloudExport.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace varnet {

namespace {

using Json = nlohmann::json;

std::optional<double> number(const Json& object, const char* key) {
    const auto value = object.find(key);
    if (value == object.end() || !value->is_number()) return std::nullopt;
    const double result = value->get<double>();
    return std::isfinite(result) ? std::optional(result) : std::nullopt;
}

std::optional<std::string> text(const Json& object, const char* key) {
    const auto value = object.find(key);
    return value != object.end() && value->is_string() ? std::optional(value->get<std::string>())
                                                       : std::nullopt;
}

std::optional<Date> date(const Json& object, const char* key) {
    const auto seconds = number(object, key);
    return seconds ? std::optional(Date::fromUnix(*seconds)) : std::nullopt;
}

/// A count, which is never below zero.
template <typename Count>
Count count(const Json& object, const char* key) {
    const auto value = object.find(key);
    if (value == object.end() || !value->is_number_integer()) return 0;
    if (value->is_number_unsigned()) {
        const auto result = value->get<std::uint64_t>();
        return result > static_cast<std::uint64_t>(INT64_MAX) && std::is_signed_v<Count>
                   ? 0
                   : static_cast<Count>(result);
    }
    return 0; // below zero
}

const Json& list(const Json& object, const char* key) {
    static const Json none = Json::array();
    const auto value = object.find(key);
    return value != object.end() && value->is_array() ? *value : none;
}

std::set<std::string> texts(const Json& object, const char* key) {
    std::set<std::string> result;
    for (const Json& item : list(object, key))
        if (item.is_string()) result.insert(item.get<std::string>());
    return result;
}

std::set<Date> dates(const Json& object, const char* key) {
    std::set<Date> result;
    for (const Json& item : list(object, key))
        if (item.is_number() && std::isfinite(item.get<double>()))
            result.insert(Date::fromUnix(item.get<double>()));
    return result;
}

/// Calls a function with the payload and the id of each record of a kind.
template <typename Use>
bool forEach(std::string_view records, std::string_view kind, Use use) {
    const Json all = Json::parse(records, nullptr, false);
    if (!all.is_array()) return false;
    for (const Json& record : all) {
        if (!record.is_object() || text(record, "kind") != kind) continue;
        const auto data = record.find("data");
        if (data != record.end() && data->is_object()) use(*data, record);
    }
    return true;
}

/// The first moment of a day written as "2026-11-21" in a zone; empty for any other text.
std::optional<Date> startOfDay(const std::string& day, const std::string& zone) {
    int year = 0;
    unsigned month = 0;
    unsigned dayOfMonth = 0;
    int length = 0;
    if (day.size() != 10 ||
        std::sscanf(day.c_str(), "%4d-%2u-%2u%n", &year, &month, &dayOfMonth, &length) != 3 || length != 10)
        return std::nullopt;
    const std::chrono::year_month_day civil{std::chrono::year(year), std::chrono::month(month),
                                            std::chrono::day(dayOfMonth)};
    if (!civil.ok()) return std::nullopt;
    const std::chrono::sys_days days = civil;
    const FlameCalendar calendar(zone);
    const double noon = static_cast<double>(days.time_since_epoch().count()) * 86'400 + 43'200;
    // Zones lie up to 14 hours apart from Greenwich.
    for (const int around : {0, -1, 1}) {
        const Date start = calendar.startOfDay(Date::fromUnix(noon + around * 86'400.0));
        const FlameCalendar::Clock clock = calendar.clock(start);
        if (clock.year == year && clock.month == month && clock.day == dayOfMonth) return start;
    }
    return std::nullopt;
}

std::optional<BatteryState> state(const std::optional<std::string>& name) {
    if (name == "discharging") return BatteryState::onBattery;
    if (name == "charging") return BatteryState::charging;
    if (name == "full") return BatteryState::charged;
    if (name == "notCharging") return BatteryState::pluggedIn;
    return std::nullopt;
}

std::optional<BatteryPoint> batteryPoint(const Json& data, const Json& record) {
    const auto at = date(record, "at");
    const auto charge = number(data, "charge");
    const auto stands = state(text(data, "state"));
    const auto segment = Uuid::fromText(text(data, "segment").value_or(""));
    if (!at || !charge || !stands || !segment) return std::nullopt;
    return BatteryPoint{*at, *charge, *stands, number(data, "watts"), *segment};
}

std::optional<BatterySession> batterySession(const Json& data, const Json& record) {
    const auto id = Uuid::fromText(text(record, "id").value_or(""));
    const auto start = date(data, "start");
    const auto end = date(data, "end");
    if (!id || !start || !end) return std::nullopt;
    BatterySession session;
    session.id = *id;
    session.start = *start;
    session.end = *end;
    session.startCharge = number(data, "startCharge");
    session.endCharge = number(data, "endCharge");
    session.observedSeconds = number(data, "seconds").value_or(0);
    return session;
}

} // namespace

std::optional<FlameArchive> CloudExport::restoreCollection(std::string_view records) {
    std::optional<FlameArchive> archive;
    forEach(records, "collection", [&](const Json& data, const Json&) {
        const auto started = date(data, "started");
        const auto timezone = text(data, "timezone");
        if (!started || !timezone || archive) return;
        FlameArchive& made = archive.emplace();
        made.started = *started;
        made.timezone = *timezone;
        if (const auto metrics = data.find("metrics"); metrics != data.end() && metrics->is_object())
            for (const auto& [key, value] : metrics->items())
                if (value.is_number() && std::isfinite(value.template get<double>()))
                    made.metrics[key] = value.template get<double>();
        if (const auto unlocked = data.find("unlocked"); unlocked != data.end() && unlocked->is_object())
            for (const auto& [id, value] : unlocked->items())
                if (const auto at = date(*unlocked, id.c_str())) made.unlocked[id] = *at;
        for (const Json& json : list(data, "records")) {
            if (!json.is_object()) continue;
            const auto id = text(json, "id");
            const auto label = text(json, "label");
            const auto value = number(json, "value");
            const auto at = date(json, "date");
            if (id && label && value && at) made.records[*id] = {*id, *label, *value, *at};
        }
        made.qualifiedDays = dates(data, "qualifiedDays");
        made.cleanupDays = dates(data, "cleanupDays");
        made.tools = texts(data, "tools");
        made.inspectedKinds = texts(data, "inspectedKinds");
    });
    return archive;
}

std::optional<std::vector<FlameDay>> CloudExport::restoreDays(std::string_view records) {
    std::map<Date, FlameDay> days;
    const bool read = forEach(records, "day", [&](const Json& data, const Json&) {
        const auto start =
            startOfDay(text(data, "date").value_or(""), text(data, "timezone").value_or("GMT"));
        if (!start) return;
        FlameDay day;
        day.date = *start;
        day.seconds = number(data, "seconds").value_or(0);
        day.peakCPU = number(data, "peakCPU");
        day.stops = count<std::int64_t>(data, "stops");
        day.ghosts = count<std::int64_t>(data, "ghosts");
        day.folders = count<std::int64_t>(data, "folders");
        day.trashBytes = count<std::uint64_t>(data, "trashBytes");
        days[*start] = day;
    });
    if (!read) return std::nullopt;
    std::vector<FlameDay> result;
    result.reserve(days.size());
    for (auto& [start, day] : days)
        result.push_back(std::move(day));
    return result;
}

std::optional<BatteryArchive> CloudExport::restoreBattery(std::string_view records) {
    BatteryArchive archive;
    const auto byDate = [](const auto& a, const auto& b) { return a.date < b.date; };
    const bool read = forEach(records, "battery", [&](const Json& data, const Json& record) {
        if (auto point = batteryPoint(data, record)) archive.points.push_back(*point);
    });
    if (!read) return std::nullopt;
    forEach(records, "health", [&](const Json& data, const Json& record) {
        const auto at = date(record, "at");
        const auto capacity = number(data, "capacity");
        if (!at || !capacity) return;
        const auto cycles = count<std::uint64_t>(data, "cycles");
        archive.health.push_back({*at, *capacity,
                                  data.contains("cycles") && cycles <= INT32_MAX
                                      ? std::optional(static_cast<int>(cycles))
                                      : std::nullopt});
    });
    forEach(records, "session", [&](const Json& data, const Json& record) {
        if (auto session = batterySession(data, record)) archive.sessions.push_back(std::move(*session));
    });
    std::ranges::stable_sort(archive.points, byDate);
    std::ranges::stable_sort(archive.health, byDate);
    std::ranges::stable_sort(archive.sessions, {}, &BatterySession::start);
    return archive;
}

FlameArchive CloudExport::merged(FlameArchive restored, const FlameArchive& local) {
    restored.metrics.insert(local.metrics.begin(), local.metrics.end());
    restored.unlocked.insert(local.unlocked.begin(), local.unlocked.end());
    restored.records.insert(local.records.begin(), local.records.end());
    restored.tools.insert(local.tools.begin(), local.tools.end());
    restored.inspectedKinds.insert(local.inspectedKinds.begin(), local.inspectedKinds.end());
    restored.creditedStops = local.creditedStops; // or a stop that the sums hold would count again
    if (restored.timezone != local.timezone) return restored;
    restored.qualifiedDays.insert(local.qualifiedDays.begin(), local.qualifiedDays.end());
    restored.cleanupDays.insert(local.cleanupDays.begin(), local.cleanupDays.end());
    for (const FlameDay& day : local.days) {
        const auto same = std::ranges::find(restored.days, day.date, &FlameDay::date);
        if (same == restored.days.end()) {
            restored.days.push_back(day);
        } else if (!same->topApp) {
            same->topApp = day.topApp;
        }
    }
    std::ranges::sort(restored.days, {}, &FlameDay::date);
    return restored;
}

} // namespace varnet
