#include "VarnetCore/Cloud/CloudExport.h"

#include "VarnetCore/Base/Sha256.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <utf8proc.h>

#include <algorithm>
#include <cstdint>

namespace varnet {

namespace {

using Json = nlohmann::json;

constexpr std::size_t longestName = 120; ///< characters
constexpr const char* unknownName = "Unknown process";

double unix(Date date) {
    return date.sinceUnixEpoch();
}

Json dates(const std::set<Date>& days) {
    Json list = Json::array();
    for (const Date day : days)
        list.push_back(unix(day));
    return list;
}

Json collectionPayload(const FlameArchive& archive) {
    Json unlocked = Json::object();
    for (const auto& [id, date] : archive.unlocked)
        unlocked[id] = unix(date);
    Json records = Json::array(); // by id, as the map is
    for (const auto& [id, record] : archive.records)
        records.push_back({{"id", record.id},
                           {"label", record.label},
                           {"value", record.value},
                           {"date", unix(record.date)}});
    return {{"started", unix(archive.started)},
            {"timezone", archive.timezone},
            {"metrics", archive.metrics},
            {"unlocked", unlocked},
            {"records", records},
            {"qualifiedDays", dates(archive.qualifiedDays)},
            {"cleanupDays", dates(archive.cleanupDays)},
            {"tools", archive.tools},
            {"inspectedKinds", archive.inspectedKinds}};
}

std::string dayText(const FlameCalendar& calendar, Date date) {
    const FlameCalendar::Clock clock = calendar.clock(date);
    return fmt::format("{:04}-{:02}-{:02}", clock.year, clock.month, clock.day);
}

Json dayPayload(const FlameDay& day, const std::string& date, const std::string& timezone) {
    Json json{
        {"date", date},         {"timezone", timezone},   {"seconds", day.seconds},      {"stops", day.stops},
        {"ghosts", day.ghosts}, {"folders", day.folders}, {"trashBytes", day.trashBytes}};
    if (day.peakCPU) json["peakCPU"] = *day.peakCPU;
    return json;
}

const char* stateText(BatteryState state) {
    switch (state) {
    case BatteryState::onBattery:
        return "discharging";
    case BatteryState::charging:
        return "charging";
    case BatteryState::charged:
        return "full";
    case BatteryState::pluggedIn:
        break;
    }
    return "notCharging";
}

bool isPrintable(utf8proc_int32_t character) {
    const auto category = utf8proc_category(character);
    return category != UTF8PROC_CATEGORY_CC && category != UTF8PROC_CATEGORY_CF &&
           category != UTF8PROC_CATEGORY_CS && category != UTF8PROC_CATEGORY_ZL &&
           category != UTF8PROC_CATEGORY_ZP;
}

/// Bytes of the first so many characters.
std::size_t lengthOf(std::string_view text, std::size_t characters) {
    for (std::size_t at = 0; at < text.size(); ++at)
        if ((static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80 && characters-- == 0) return at;
    return text.size();
}

/// Collects items until one has no form.
class Items {
public:
    void add(const char* kind, std::string id, Date at, const Json& payload) {
        auto item = CloudItem::make(kind, std::move(id), unix(at), payload);
        whole_ = whole_ && item;
        if (item) items_.push_back(std::move(*item));
    }
    CloudResult<std::vector<CloudItem>> take() {
        if (!whole_) return std::unexpected(CloudStorageError::serialization);
        return std::move(items_);
    }

private:
    std::vector<CloudItem> items_;
    bool whole_ = true;
};

/// What names a day's estimate. The last of a day moves on with every reading, and stays the same record.
std::string healthID(const std::vector<BatteryHealthPoint>& points, std::size_t at,
                     const FlameCalendar& calendar) {
    const std::string day = dayText(calendar, points[at].date);
    const bool last = at + 1 == points.size() || dayText(calendar, points[at + 1].date) != day;
    return sha256(last ? "health:" + day : fmt::format("health:{}", points[at].date.seconds));
}

void addBattery(Items& items, const BatteryArchive& battery, std::optional<Date> since,
                const FlameCalendar& calendar) {
    const auto old = [&](Date date) { return since && date < *since; };
    for (const BatteryPoint& point : battery.points) {
        if (old(point.date)) continue;
        Json payload{
            {"charge", point.charge}, {"state", stateText(point.state)}, {"segment", point.segment.text()}};
        if (point.watts) payload["watts"] = *point.watts;
        items.add("battery", sha256(fmt::format("battery:{}:{}", point.date.seconds, point.segment.text())),
                  point.date, payload);
    }
    for (std::size_t at = 0; at < battery.health.size(); ++at) {
        const BatteryHealthPoint& point = battery.health[at];
        if (old(point.date)) continue;
        Json payload{{"capacity", point.capacity}};
        if (point.cycles) payload["cycles"] = *point.cycles;
        items.add("health", healthID(battery.health, at, calendar), point.date, payload);
    }
    for (const BatterySession& session : battery.sessions) {
        Json payload{
            {"start", unix(session.start)}, {"end", unix(session.end)}, {"seconds", session.observedSeconds}};
        if (session.startCharge) payload["startCharge"] = *session.startCharge;
        if (session.endCharge) payload["endCharge"] = *session.endCharge;
        items.add("session", session.id.text(), session.end, payload);
    }
}

} // namespace

CloudResult<std::vector<CloudItem>> CloudExport::archive(const FlameArchive& collection,
                                                         const BatteryArchive& battery,
                                                         std::optional<Date> since, Date now) {
    Items items;
    items.add("collection", "current", now, collectionPayload(collection));
    const FlameCalendar calendar = collection.calendar();
    for (const FlameDay& day : collection.days) {
        const std::string date = dayText(calendar, day.date);
        items.add("day", date, day.date, dayPayload(day, date, collection.timezone));
    }
    addBattery(items, battery, since, calendar);
    return items.take();
}

std::string CloudExport::name(std::string_view path) {
    const std::size_t end = path.find_last_not_of("/\\");
    path = path.substr(0, end == std::string_view::npos ? 0 : end + 1);
    path = path.substr(path.find_last_of("/\\") + 1); // of none: the whole
    std::string text;
    while (!path.empty()) {
        utf8proc_int32_t character = 0;
        const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(path.data()),
                                             static_cast<utf8proc_ssize_t>(path.size()), &character);
        const auto bytes = static_cast<std::size_t>(std::max<utf8proc_ssize_t>(length, 1));
        if (length > 0 && isPrintable(character)) text += path.substr(0, bytes);
        path.remove_prefix(bytes);
    }
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    text.resize(lengthOf(text, longestName));
    return text.empty() ? unknownName : text;
}

} // namespace varnet
