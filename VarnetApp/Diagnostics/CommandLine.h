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
        renderLocalization,
        renderMarketing,
        renderPreviews,
        renderReports,
        help,
        version,
        refuse
    };

    /// What follows a switch.
    enum class Takes { nothing, seconds, folder, oneFolder, folders, language, name };

    struct Switch {
        std::string_view name;
        std::string_view help;         ///< what it does, in words that fit behind it
        Action action = Action::start; ///< of `start`: it goes along with others
        Takes takes = Takes::nothing;

        /// How what follows is written in the help, in brackets where it may be missing.
        std::string_view operand() const noexcept;
    };

    Action action = Action::start;
    double seconds = 30;              ///< of a benchmark
    std::string folder;               ///< that a renderer writes into
    std::vector<std::string> folders; ///< to be searched or measured
    std::string language;             ///< of what is rendered; empty: English
    std::string only;                 ///< beginning of the names of the pictures to render; empty: all
    bool showWindow = false;          ///< the main window opens whatever started the program
    bool showSettings = false;        ///< so do the settings
    bool login = false;               ///< started by the desktop with the session
    std::string refusal;              ///< a sentence for standard error when the action is to refuse

    /// @param arguments without the program's own name
    static CommandLine parse(std::span<const std::string_view> arguments);

    /// All there are, in the order of their precedence: what help, manual and shells' completions tell of.
    static std::span<const Switch> knownSwitches() noexcept;

    /// The text of --help.
    static std::string help();
};

} // namespace varnet
