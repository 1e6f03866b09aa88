#pragma once

#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace varnet::samples {

constexpr std::uint64_t boot = 1'790'000'000;
constexpr std::uint32_t user = 1000;
/// A moment some hours after the boot.
constexpr Date noon = Date::fromUnix(1'790'040'000);

/// An identity that started that many seconds before noon.
inline ProcessIdentity identity(std::int32_t pid, std::uint64_t age = 10'000) {
    return {boot, pid, (1'790'040'000 - age) * 1'000'000};
}

inline std::shared_ptr<const Project> project(const std::string& root) {
    return std::make_shared<const Project>(Project{root, root, root.substr(root.rfind('/') + 1), "main"});
}

/// One of the user's measured, idle processes.
inline ProcessSample process(std::int32_t pid, std::int32_t parent = 1, const std::string& name = "node") {
    ProcessSample sample;
    sample.id = identity(pid);
    sample.parentPID = parent;
    sample.uid = user;
    sample.name = name;
    sample.executable = "/usr/bin/" + name;
    sample.cpu = 0;
    sample.memory = 1000;
    sample.portsAvailable = true;
    return sample;
}

inline SampleRef shared(ProcessSample sample) {
    return std::make_shared<const ProcessSample>(std::move(sample));
}

/// A server without workers.
inline Service server(ProcessSample root) {
    SampleRef ref = shared(std::move(root));
    return {ref, {ref}};
}

} // namespace varnet::samples
