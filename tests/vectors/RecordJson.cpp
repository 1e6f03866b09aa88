#include "tests/vectors/RecordJson.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <variant>

namespace varnet::vectors {

const Json& at(const Json& object, const char* key) {
    static const Json nothing;
    const auto found = object.find(key);
    return found == object.end() ? nothing : *found;
}

void Fields<BatchStopRequest>::read(BatchStopRequest& request, const Json& json) {
    const auto identity = vectors::read<ProcessIdentity>(json, "identity");
    const std::string kind = readText(json, "case");
    if (kind != "process" && kind != "application") throw std::runtime_error("unknown case " + kind);
    request.item = BatchStopRequest::Process{identity};
    if (kind == "application")
        request.item = BatchStopRequest::Application{
            vectors::read<ApplicationDescriptor>(json, "application"), identity};
}

Json Fields<BatchStopRequest>::write(const BatchStopRequest& request) {
    if (const auto* process = std::get_if<BatchStopRequest::Process>(&request.item))
        return {{"case", "process"}, {"identity", written(process->identity)}};
    const auto& application = std::get<BatchStopRequest::Application>(request.item);
    return {{"case", "application"},
            {"application", written(application.application)},
            {"identity", written(application.identity)}};
}

void Fields<FanLevel>::read(FanLevel& level, const Json& json) {
    constexpr std::array<std::string_view, 4> names{"stopped", "running", "vacuum", "takeoff"};
    const auto found = std::ranges::find_if(names, [&](std::string_view name) { return json == name; });
    if (!json.is_number() && found == names.end()) throw std::runtime_error("no fan level: " + json.dump());
    level = static_cast<FanLevel>(json.is_number() ? json.get<std::ptrdiff_t>() : found - names.begin());
}

Json Fields<FanLevel>::write(FanLevel level) {
    return static_cast<int>(level);
}

} // namespace varnet::vectors
