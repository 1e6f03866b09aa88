#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Findings/Finding.h"
#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Project.h"
#include "VarnetCore/Monitoring/Service.h"
#include "tests/vectors/Comparison.h"

#include <concepts>
#include <cstdint>
#include <functional>
#include <optional>
#include <ranges>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// Records from the vectors' JSON and back, by a list of their fields. Reading throws std::runtime_error on a
/// value of the wrong type; a key that is null or absent reads as the record's default.
namespace varnet::vectors {

/// A record's fields: visit(visit) calls with each key and a pointer to the member, or to a function without
/// arguments, which is only written. A type whose JSON is of another form has read(value, json) and
/// write(value) instead.
template <typename Record>
struct Fields;

#define VARNET_FIELD(name) visit(#name, &Record::name);
/// Fields whose keys are the members' own names.
#define VARNET_RECORD(Type, ...)                                                                             \
    template <>                                                                                              \
    struct Fields<Type> {                                                                                    \
        static void visit(auto&& visit) {                                                                    \
            using Record = Type;                                                                             \
            NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(VARNET_FIELD, __VA_ARGS__))                             \
        }                                                                                                    \
    };

VARNET_RECORD(ProcessIdentity, boot, pid, start)
VARNET_RECORD(Attribution, agent, origin, confidence, reason, exitedAt)
VARNET_RECORD(Project, root, repository, name, worktree)
VARNET_RECORD(ApplicationDescriptor, bundlePath, bundleID, name, pid, processStart)
VARNET_RECORD(ProcessSample, id, parentPID, uid, name, executable, arguments, cwd, cpu, averageCPU, memory,
              energyImpact, instantaneousEnergyImpact, ports, portsAvailable, project, attribution,
              application, isSystem)
VARNET_RECORD(ApplicationGroup, id, name, subtitle, kind, processes, application, project)
VARNET_RECORD(Service, root, members)
VARNET_RECORD(Finding, id, kind, title, explanation, groupID, targets, firstSeen)
VARNET_RECORD(StopTarget, identity, uid, name)
VARNET_RECORD(Fan, id, rpm, maximum)
VARNET_RECORD(FanSnapshot, availability, fans, level, spunUp, measuredAt)
VARNET_RECORD(SystemMemorySnapshot, usedRAM, compressed, swapUsed)
VARNET_RECORD(CPUPoint, date, value)
VARNET_RECORD(MonitorSnapshot, date, processes, groups, services, findings, fans, thermal, systemCPU,
              physicalMemory, systemMemory, history, logicalCores, error)

template <>
struct Fields<BatchStopRequest> {
    static void read(BatchStopRequest& request, const Json& json);
    static Json write(const BatchStopRequest& request);
};

/// Read from its number or its name, written as its number.
template <>
struct Fields<FanLevel> {
    static void read(FanLevel& level, const Json& json);
    static Json write(FanLevel level);
};

/// The last of an enumeration's cases, whose names are their raw values.
template <typename Case>
constexpr Case lastCase{};
template <>
inline constexpr auto lastCase<Confidence> = Confidence::unknown;
template <>
inline constexpr auto lastCase<GroupKind> = GroupKind::unassigned;
template <>
inline constexpr auto lastCase<FindingKind> = FindingKind::restarted;
template <>
inline constexpr auto lastCase<FanAvailability> = FanAvailability::stale;
template <>
inline constexpr auto lastCase<Thermal> = Thermal::critical;
template <>
inline constexpr auto lastCase<StopOutcome> = StopOutcome::failed;

/// Where the vectors' default is another than the record's own.
template <typename Record>
void makeSparse(Record&) {}
template <>
inline void makeSparse(ApplicationGroup& group) {
    group.kind = GroupKind::application;
}

/// The value under a key; null when there is none.
const Json& at(const Json& object, const char* key);

template <typename Value>
Value read(const Json& json);

/// Leaves the value as it is when the JSON is null.
template <typename Value>
void readInto(Value& value, const Json& json) {
    if (json.is_null()) return;
    if constexpr (requires { Fields<Value>::read(value, json); }) {
        Fields<Value>::read(value, json);
    } else if constexpr (requires { sizeof(Fields<Value>); }) {
        makeSparse(value);
        Fields<Value>::visit([&]<typename Member>(const char* key, Member member) {
            if constexpr (std::is_member_object_pointer_v<Member>) readInto(value.*member, at(json, key));
        });
    } else if constexpr (std::is_enum_v<Value>) {
        for (int one = 0; one <= static_cast<int>(lastCase<Value>); ++one) {
            if (value = static_cast<Value>(one); json == rawValue(value)) return;
        }
        throw std::runtime_error("no such case: " + json.dump());
    } else if constexpr (std::is_same_v<Value, bool> || std::is_same_v<Value, std::string>) {
        json.get_to(value);
    } else if constexpr (std::integral<Value>) {
        const bool fits = json.is_number_unsigned()  ? std::in_range<Value>(json.get<std::uint64_t>())
                          : json.is_number_integer() ? std::in_range<Value>(json.get<std::int64_t>())
                                                     : false;
        if (!fits) throw std::runtime_error("no integer in range: " + json.dump());
        json.get_to(value);
    } else if constexpr (std::is_same_v<Value, double>) {
        const auto number = numberOf(json);
        if (!number) throw std::runtime_error("no number: " + json.dump());
        value = *number;
    } else if constexpr (std::is_same_v<Value, Date>) {
        readInto(value.seconds, json);
    } else if constexpr (std::is_same_v<Value, Uuid>) {
        const auto uuid = Uuid::fromText(read<std::string>(json));
        if (!uuid) throw std::runtime_error("no UUID: " + json.dump());
        value = *uuid;
    } else if constexpr (requires { typename Value::mapped_type; }) {
        for (const auto& [key, element] : json.items())
            readInto(value[key], element);
    } else if constexpr (requires { typename Value::key_type; }) {
        for (const Json& element : json)
            value.insert(read<typename Value::key_type>(element));
    } else if constexpr (requires { value.push_back(*value.begin()); }) {
        for (const Json& element : json)
            value.push_back(read<typename Value::value_type>(element));
    } else if constexpr (requires { value.use_count(); }) {
        using Held = std::remove_const_t<typename Value::element_type>;
        value = std::make_shared<Held>(read<Held>(json));
    } else if constexpr (requires { value.has_value(); }) {
        value = read<typename Value::value_type>(json);
    } else if constexpr (std::constructible_from<Value, std::vector<std::string>>) {
        value = read<std::vector<std::string>>(json);
    } else {
        value = read<std::string>(json);
    }
}

template <typename Value>
Value read(const Json& json) {
    Value value{};
    readInto(value, json);
    return value;
}

template <typename Value>
Value read(const Json& object, const char* key) {
    return read<Value>(at(object, key));
}

inline std::string readText(const Json& object, const char* key) {
    return read<std::string>(object, key);
}
inline bool readFlag(const Json& object, const char* key) {
    return read<bool>(object, key);
}
inline Date readDate(const Json& object, const char* key) {
    return read<Date>(object, key);
}

/// An empty optional or pointer is null.
template <typename Value>
Json written(const Value& value) {
    if constexpr (requires { Fields<Value>::write(value); }) {
        return Fields<Value>::write(value);
    } else if constexpr (requires { sizeof(Fields<Value>); }) {
        Json json = Json::object();
        Fields<Value>::visit(
            [&](const char* key, auto member) { json[key] = written(std::invoke(member, value)); });
        return json;
    } else if constexpr (std::is_enum_v<Value>) {
        return rawValue(value);
    } else if constexpr (std::is_same_v<Value, Date>) {
        return value.seconds;
    } else if constexpr (std::is_same_v<Value, Uuid>) {
        return value.text();
    } else if constexpr (std::is_same_v<Value, double>) {
        // JSON has no word for what is no number.
        if (value != value) return "nan";
        return value - value == 0 ? Json(value) : Json(value > 0 ? "inf" : "-inf");
    } else if constexpr (std::is_same_v<Value, Json> || std::convertible_to<Value, std::string_view>) {
        return value;
    } else if constexpr (requires { typename Value::mapped_type; }) {
        Json json = Json::object();
        for (const auto& [key, element] : value)
            json[key] = written(element);
        return json;
    } else if constexpr (std::ranges::range<Value>) {
        Json list = Json::array();
        for (const auto& element : value)
            list.push_back(written(element));
        return list;
    } else if constexpr (requires { value.list(); }) {
        return written(value.list());
    } else if constexpr (requires { *value; }) {
        return value ? written(*value) : Json();
    } else {
        return value;
    }
}

/// What a function makes of each element, as a list.
template <typename Range, typename Make>
Json mapped(const Range& range, Make make) {
    Json list = Json::array();
    for (const auto& element : range)
        list.push_back(written(make(element)));
    return list;
}

} // namespace varnet::vectors
