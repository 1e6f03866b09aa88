#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace varnet {

/// What the program was asked to do.
struct CommandLine {
    enum class Action { start, diagnose, benchmark, integration, help, version, refuse };

    Action action = Action::start;
    double seconds = 30; ///< of a benchmark
    std::string refusal; ///< a sentence for standard error when the action is to refuse

    /// @param arguments without the program's own name
    static CommandLine parse(std::span<const std::string_view> arguments);

    /// The text of --help.
    static const char* help() noexcept;
};

} // namespace varnet
