#pragma once

#include "VarnetCore/Base/Date.h"
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
#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

/// Records from the vectors' JSON and back. Reading throws std::runtime_error on a value of the wrong type;
/// a key that is null or absent reads as the record's default.
namespace varnet::vectors {

/// The value under a key; null when there is none.
const Json& at(const Json& object, const char* key);

std::string readText(const Json& object, const char* key);
std::vector<std::string> readTexts(const Json& object, const char* key);
bool readFlag(const Json& object, const char* key);
std::optional<double> readNumber(const Json& object, const char* key);
std::optional<Date> readDate(const Json& object, const char* key);

template <std::integral Integer>
std::optional<Integer> readInteger(const Json& object, const char* key) {
    const Json& json = at(object, key);
    if (json.is_null()) return std::nullopt;
    const bool fits = json.is_number_unsigned()  ? std::in_range<Integer>(json.get<std::uint64_t>())
                      : json.is_number_integer() ? std::in_range<Integer>(json.get<std::int64_t>())
                                                 : false;
    if (!fits) throw std::runtime_error(std::string(key) + " is no integer in range: " + json.dump());
    return json.get<Integer>();
}

ProcessIdentity readIdentity(const Json& json);
std::unordered_set<ProcessIdentity> readIdentities(const Json& list);
Attribution readAttribution(const Json& json);
Project readProject(const Json& json);
ApplicationDescriptor readApplication(const Json& json);
ProcessSample readSample(const Json& json);
/// @param pool what a sample given as a number stands for; null: none
std::vector<ProcessSample> readSamples(const Json& list, const Json& pool = {});
std::vector<SampleRef> readSampleRefs(const Json& list, const Json& pool = {});
SampleRef readSampleRef(const Json& json, const Json& pool = {});
ApplicationGroup readGroup(const Json& json, const Json& pool = {});
std::vector<ApplicationGroup> readGroups(const Json& list, const Json& pool = {});
Service readService(const Json& json, const Json& pool = {});
std::vector<Service> readServices(const Json& list, const Json& pool = {});
Finding readFinding(const Json& json);
BatchStopRequest readRequest(const Json& json);
std::vector<BatchStopRequest> readRequests(const Json& list);
/// The level as its number or by name.
FanSnapshot readFans(const Json& json);
MonitorSnapshot readSnapshot(const Json& json, const Json& pool = {});

Json written(const ProcessIdentity& identity);
Json written(const Attribution& attribution);
Json written(const Project& project);
Json written(const ApplicationDescriptor& application);
Json written(const Finding& finding);
Json written(const BatchStopRequest& request);
Json written(const std::vector<BatchStopRequest>& requests);

/// What an optional or a pointer holds; null when it is empty.
template <typename Holder>
Json writtenOrNull(const Holder& holder) {
    if (!holder) return nullptr;
    if constexpr (requires { written(*holder); }) {
        return written(*holder);
    } else {
        return Json(*holder);
    }
}

} // namespace varnet::vectors
