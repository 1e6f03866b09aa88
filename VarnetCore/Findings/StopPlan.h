#pragma once

#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Monitoring/ApplicationDescriptor.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace varnet {

/// One process that a plan would stop. The uid is checked again with the identity before any signal.
struct StopTarget {
    ProcessIdentity identity;
    std::uint32_t uid = 0;
    std::string name;

    friend bool operator==(const StopTarget&, const StopTarget&) = default;
};

/// Exactly what a stop would stop, for the user to review.
struct StopPlan {
    Uuid id; ///< new for each plan
    std::string name;
    std::optional<std::string> project; ///< the project's name
    std::vector<int> ports;             ///< of all targets, ascending, each once
    std::vector<StopTarget> targets;    ///< the root, then its children, then theirs
    std::string serviceID;              ///< the root's ProcessIdentity::id
    ProcessIdentity root;
    std::optional<Attribution> origin; ///< the agent that the root is credited to

    friend bool operator==(const StopPlan&, const StopPlan&) = default;
};

/// One ticked item of a list: an application to quit, or a process to stop with what it started.
struct BatchStopRequest {
    struct Application {
        ApplicationDescriptor application; ///< as the user reviewed it
        ProcessIdentity identity;          ///< its main process

        friend auto operator<=>(const Application&, const Application&) = default;
    };
    struct Process {
        ProcessIdentity identity;

        friend auto operator<=>(const Process&, const Process&) = default;
    };

    std::variant<Application, Process> item;

    friend auto operator<=>(const BatchStopRequest&, const BatchStopRequest&) = default;
};

/// An application that a batch would ask to quit. The target bears the name the user reviewed.
struct BatchApplicationStop {
    ApplicationDescriptor application;
    StopTarget target;

    friend bool operator==(const BatchApplicationStop&, const BatchApplicationStop&) = default;
};

/// Exactly what stopping a selection would quit and stop.
struct BatchStopPlan {
    Uuid id; ///< new for each plan
    std::vector<BatchApplicationStop> applications;
    std::vector<StopPlan> processes; ///< one per selected process; their targets may overlap

    /// All process plans as one that names each target once; beside its name and targets it is the first
    /// plan. Empty without process plans.
    std::optional<StopPlan> processPlan() const;
    /// The applications' targets, then those of the process plan.
    std::vector<StopTarget> targets() const;

    friend bool operator==(const BatchStopPlan&, const BatchStopPlan&) = default;
};

/// Why there is no plan. The texts are the caller's.
enum class StopPlanningError {
    unavailable,      ///< not in the picture, no measured picture, or nothing that may be stopped here
    protectedProcess, ///< must never be stopped
    changed,          ///< no longer what the user reviewed
};

/// Whether a stop asks or insists. Nothing ever goes from one to the other by itself.
enum class StopForce { polite, forced };

/// What became of a target.
enum class StopOutcome { stopped, alreadyStopped, stillRunning, identityChanged, denied, failed };

/// The case's own name, such as "alreadyStopped".
std::string_view rawValue(StopOutcome outcome) noexcept;

/// Whether the process is known to be gone.
constexpr bool isExited(StopOutcome outcome) noexcept {
    return outcome == StopOutcome::stopped || outcome == StopOutcome::alreadyStopped;
}

struct StopResult {
    StopTarget target;
    StopOutcome outcome = StopOutcome::stillRunning;
    std::string detail; ///< the system's words, or a hint for the user; mostly empty

    friend bool operator==(const StopResult&, const StopResult&) = default;
};

} // namespace varnet

template <>
struct std::hash<varnet::BatchStopRequest> {
    std::size_t operator()(const varnet::BatchStopRequest& request) const noexcept {
        // Two descriptors of one process hardly ever meet, so the identity spreads requests well enough.
        const auto identity = [](const auto& item) { return item.identity; };
        return std::hash<varnet::ProcessIdentity>()(std::visit(identity, request.item)) ^
               request.item.index();
    }
};
