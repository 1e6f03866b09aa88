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

constexpr const char* helpText = R"(Usage: varnet [SWITCH]

Shows what keeps this machine busy, and which of it may go.

  --render-cloud DIR       write pictures of the cloud account in its states
  --battery-diagnose       measure the battery and print it as one JSON object
  --render-battery DIR     write pictures of the battery page in its states
  --render-storage DIR     write pictures of the storage page in its states
  --render-collection DIR  write pictures of the badges and of a week to share
  --check-update           ask whether there is a newer version, print the answer
  --storage-diagnose [FOLDER...]
                           find the projects in the usual places and in these folders,
                           print what they occupy as one JSON object
  --disk-diagnose [DIR]    measure the whole disk, or a folder, and print what is on it
  --diagnose               measure once and print everything as one JSON object
  --benchmark [SECONDS]    measure as with an open window, print what that costs (30 seconds)
  --integration-test       find and stop a server of its own, print how that went as JSON
  --render-previews DIR    write a picture of every screen
  --render-reports DIR     write the pictures that are shared
  --preview-language L     beside a renderer: "en" or "cs"
  --preview-only NAME      beside it: only pictures whose names begin so
  --show-window            open the main window with the start
  --login                  start quietly, as the desktop does with the session
  --help                   this text
  --version                the version

Without a switch the program starts. Diagnostic runs keep their state under
"artifacts" in the current folder and never touch your own.

For development: with VARNET_KERNEL_ROOT set to a folder that holds "proc" and
"sys", --battery-diagnose and --diagnose read fans, heat and battery there.
)";

/// What follows a switch.
enum class Takes { nothing, seconds, folder, folders, language, name };

using Action = CommandLine::Action;

struct Switch {
    std::string_view name;
    Takes takes = Takes::nothing;
    Action action = Action::start; ///< of `start`: it goes along with others
};

/// Of several the first here wins, whatever their order on the line.
constexpr std::array switches{
    Switch{"--help", Takes::nothing, Action::help},
    Switch{"--version", Takes::nothing, Action::version},
    Switch{"--render-cloud", Takes::folder, Action::renderCloud},
    Switch{"--render-storage", Takes::folder, Action::renderStorage},
    Switch{"--battery-diagnose", Takes::nothing, Action::batteryDiagnose},
    Switch{"--render-battery", Takes::folder, Action::renderBattery},
    Switch{"--render-collection", Takes::folder, Action::renderCollection},
    Switch{"--check-update", Takes::nothing, Action::checkUpdate},
    Switch{"--storage-diagnose", Takes::folders, Action::storageDiagnose},
    Switch{"--disk-diagnose", Takes::folders, Action::diskDiagnose},
    Switch{"--diagnose", Takes::nothing, Action::diagnose},
    Switch{"--benchmark", Takes::seconds, Action::benchmark},
    Switch{"--integration-test", Takes::nothing, Action::integration},
    Switch{"--render-previews", Takes::folder, Action::renderPreviews},
    Switch{"--render-reports", Takes::folder, Action::renderReports},
    Switch{"--preview-language", Takes::language},
    Switch{"--preview-only", Takes::name},
    Switch{"--show-window"},
    Switch{"--login"},
};

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

const char* CommandLine::help() noexcept {
    return helpText;
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
        if (known->takes == Takes::folders) {
            while (i + 1 < arguments.size() && !arguments[i + 1].starts_with("--"))
                line.folders.emplace_back(arguments[++i]);
            if (argument == "--disk-diagnose" && line.folders.size() > 1)
                return refused("--disk-diagnose measures one folder.");
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
