#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// What the program was asked to do.
struct CommandLine {
    enum class Action {
        start,
        batteryDiagnose,
        renderBattery,
        renderCloud,
        renderStorage,
        storageDiagnose,
        diskDiagnose,
        diagnose,
        benchmark,
        integration,
        renderCollection,
        checkUpdate,
        renderPreviews,
        renderReports,
        help,
        version,
        refuse
    };

    Action action = Action::start;
    double seconds = 30;              ///< of a benchmark
    std::string folder;               ///< that a renderer writes into
    std::vector<std::string> folders; ///< to be searched or measured
    std::string language;             ///< of what is rendered; empty: English
    std::string only;                 ///< beginning of the names of the pictures to render; empty: all
    bool showWindow = false;          ///< the main window opens whatever started the program
    bool login = false;               ///< started by the desktop with the session
    std::string refusal;              ///< a sentence for standard error when the action is to refuse

    /// @param arguments without the program's own name
    static CommandLine parse(std::span<const std::string_view> arguments);

    /// The text of --help.
    static const char* help() noexcept;
};

} // namespace varnet
