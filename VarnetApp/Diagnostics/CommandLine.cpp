#include "VarnetApp/Diagnostics/CommandLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

namespace varnet {

namespace {

using Action = CommandLine::Action;
using Takes = CommandLine::Takes;
using Switch = CommandLine::Switch;

constexpr std::string_view introduction = R"(Usage: varnet [SWITCH]

Shows what keeps this machine busy, and which of it may go.

)";

constexpr std::string_view remarks = R"(
Without a switch the program starts. Diagnostic runs keep their state under
"artifacts" in the current folder and never touch your own.

For development: with VARNET_KERNEL_ROOT set to a folder that holds "proc" and
"sys", --battery-diagnose and --diagnose read fans, heat and battery there.
)";

/// Of several the first here wins, whatever their order on the line.
constexpr std::array switches{
    Switch{"--help", "print this text", Action::help},
    Switch{"--version", "print the version", Action::version},
    Switch{"--render-cloud", "write pictures of the cloud account in its states", Action::renderCloud,
           Takes::folder},
    Switch{"--render-localization", "write pictures of the main screens in every language",
           Action::renderLocalization, Takes::folder},
    Switch{"--render-storage", "write pictures of the storage page in its states", Action::renderStorage,
           Takes::folder},
    Switch{"--battery-diagnose", "measure the battery and print it as one JSON object",
           Action::batteryDiagnose},
    Switch{"--render-battery", "write pictures of the battery page in its states", Action::renderBattery,
           Takes::folder},
    Switch{"--render-collection", "write pictures of the badges and of a week to share",
           Action::renderCollection, Takes::folder},
    Switch{"--check-update", "ask whether there is a newer version and print the answer",
           Action::checkUpdate},
    Switch{"--storage-diagnose",
           "find the projects in the usual places and in these folders, print what they occupy as one JSON "
           "object",
           Action::storageDiagnose, Takes::folders},
    Switch{"--disk-diagnose", "measure the whole disk, or a folder, and print what is on it",
           Action::diskDiagnose, Takes::oneFolder},
    Switch{"--diagnose", "measure once and print everything as one JSON object", Action::diagnose},
    Switch{"--benchmark", "measure as with an open window, print what that costs (30 seconds)",
           Action::benchmark, Takes::seconds},
    Switch{"--integration-test", "find and stop a server of its own, print how that went as JSON",
           Action::integration},
    Switch{"--render-marketing", "write pictures that show the program to people", Action::renderMarketing,
           Takes::folder},
    Switch{"--render-previews", "write a picture of every screen", Action::renderPreviews, Takes::folder},
    Switch{"--render-reports", "write the pictures that are shared", Action::renderReports, Takes::folder},
    Switch{"--preview-language", "beside a renderer: \"en\" or \"cs\"", Action::start, Takes::language},
    Switch{"--preview-only", "beside it: only pictures whose names begin so", Action::start, Takes::name},
    Switch{"--show-window", "open the main window with the start"},
    Switch{"--show-settings", "open the settings with the start"},
    Switch{"--login", "start quietly, as the desktop does with the session"},
};

constexpr std::size_t helpColumn = 28; ///< where the sentences begin
constexpr std::size_t helpWidth = 80;

/// A switch and what it does, in lines that a terminal can show.
std::string helpEntry(const Switch& entry) {
    std::string line = "  " + std::string(entry.name);
    if (const std::string_view operand = entry.operand(); !operand.empty()) {
        line += ' ';
        line += operand;
    }
    std::string text;
    if (line.size() >= helpColumn) {
        text = line + '\n';
        line.clear();
    }
    line.resize(helpColumn, ' ');
    bool fresh = true;
    for (std::string_view rest = entry.help; !rest.empty();) {
        const std::string_view word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        if (!fresh && line.size() + 1 + word.size() > helpWidth) {
            text += line + '\n';
            line.assign(helpColumn, ' ');
            fresh = true;
        }
        if (!fresh) line += ' ';
        line += word;
        fresh = false;
    }
    return text + line + '\n';
}

CommandLine refused(std::string sentence) {
    CommandLine line;
    line.action = CommandLine::Action::refuse;
    line.refusal = std::move(sentence);
    return line;
}

std::optional<double> finiteNumber(std::string_view text) noexcept {
    double number = 0;
    const char* const end = std::to_address(text.end());
    const auto [stop, error] = std::from_chars(std::to_address(text.begin()), end, number);
    if (error != std::errc{} || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

} // namespace

std::string_view CommandLine::Switch::operand() const noexcept {
    switch (takes) {
    case Takes::nothing:
        return "";
    case Takes::seconds:
        return "[SECONDS]";
    case Takes::folder:
        return "DIR";
    case Takes::oneFolder:
        return "[DIR]";
    case Takes::folders:
        return "[FOLDER...]";
    case Takes::language:
        return "L";
    case Takes::name:
        return "NAME";
    }
    return "";
}

std::span<const CommandLine::Switch> CommandLine::knownSwitches() noexcept {
    return switches;
}

std::string CommandLine::help() {
    std::string text(introduction);
    for (const Switch& entry : switches)
        text += helpEntry(entry);
    return text += remarks;
}

CommandLine CommandLine::parse(std::span<const std::string_view> arguments) {
    std::vector<std::string_view> given;
    CommandLine line;
    std::map<std::string_view, std::string> folders;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        const auto known = std::ranges::find(switches, argument, &Switch::name);
        if (known == switches.end()) {
            const std::string kind = argument.starts_with('-') ? "Unknown switch " : "Unexpected argument ";
            return refused(kind + "\"" + std::string(argument) + "\".");
        }
        const bool hasValue = i + 1 < arguments.size() && !arguments[i + 1].starts_with("--");
        // A renderer without a folder counts as absent.
        if (known->takes == Takes::folder && !hasValue) continue;
        given.push_back(argument);
        if (known->takes == Takes::nothing || !hasValue) continue;
        if (known->takes == Takes::folders || known->takes == Takes::oneFolder) {
            while (i + 1 < arguments.size() && !arguments[i + 1].starts_with("--"))
                line.folders.emplace_back(arguments[++i]);
            if (known->takes == Takes::oneFolder && line.folders.size() > 1)
                return refused(std::string(argument) + " measures one folder.");
            continue;
        }
        const std::string_view value = arguments[++i];
        if (known->takes == Takes::folder) {
            folders[argument] = value;
        } else if (known->takes == Takes::language) {
            line.language = value;
        } else if (known->takes == Takes::name) {
            line.only = value;
        } else if (const auto seconds = finiteNumber(value)) {
            // A word that is no number leaves the length as it is.
            if (*seconds <= 0) return refused("--benchmark needs a number of seconds above 0.");
            line.seconds = *seconds;
        }
    }
    const auto has = [&](std::string_view name) { return std::ranges::find(given, name) != given.end(); };
    line.showWindow = has("--show-window");
    line.showSettings = has("--show-settings");
    line.login = has("--login");
    for (const Switch& known : switches) {
        if (known.action == Action::start || !has(known.name)) continue;
        line.action = known.action;
        if (known.takes == Takes::folder) line.folder = folders[known.name];
        break;
    }
    return line;
}

} // namespace varnet
