#include "VarnetApp/Platform/linux/ExecLine.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace varnet::platform {

namespace {

constexpr std::size_t mostWords = 256;

/// "%%" is a percent sign; every other code stands for something that the launcher fills in.
std::string withoutFieldCodes(std::string_view word) {
    std::string result;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] == '%') {
            ++i;
            if (i < word.size() && word[i] == '%') {
                result.push_back('%');
            }
        } else {
            result.push_back(word[i]);
        }
    }
    return result;
}

/// Takes the characters up to the closing quote. In double quotes a backslash guards the next character.
/// @param text begins behind the opening quote and is left behind the closing one
bool takeQuoted(std::string_view& text, char quote, std::string& word) {
    while (!text.empty()) {
        char c = text.front();
        text.remove_prefix(1);
        if (c == quote) {
            return true;
        }
        if (c == '\\' && quote == '"' && !text.empty()) {
            c = text.front();
            text.remove_prefix(1);
        }
        word.push_back(c);
    }
    return false;
}

std::optional<std::vector<std::string>> splitWords(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    bool open = false; // an empty pair of quotes is a word too
    const auto close = [&] {
        if (open) {
            words.push_back(std::move(word));
        }
        word.clear();
        open = false;
    };
    while (!text.empty() && words.size() < mostWords) {
        const char c = text.front();
        text.remove_prefix(1);
        if (c == ' ' || c == '\t' || c == '\n') {
            close();
            continue;
        }
        open = true;
        if (c == '"' || c == '\'') {
            if (!takeQuoted(text, c, word)) {
                return std::nullopt;
            }
        } else if (c == '\\' && !text.empty()) {
            word.push_back(text.front());
            text.remove_prefix(1);
        } else {
            word.push_back(c);
        }
    }
    close();
    return words;
}

std::string_view lastPiece(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

/// Position of the program behind `env`, its options and settings; empty when `env` is asked to split a text
/// of its own.
std::optional<std::size_t> behindEnv(const std::vector<std::string>& words, std::size_t position) {
    for (; position < words.size(); ++position) {
        const std::string_view word = words[position];
        if (word == "-S" || word.starts_with("--split-string")) {
            return std::nullopt;
        }
        if (word == "-u" || word == "-C" || word == "--unset" || word == "--chdir") {
            ++position;
        } else if (!word.starts_with('-') && word.find('=') == std::string_view::npos) {
            break;
        }
    }
    return position;
}

} // namespace

std::optional<ExecLine> parseExecLine(std::string_view exec) {
    const auto words = splitWords(exec);
    if (!words) {
        return std::nullopt;
    }
    std::size_t position = 0;
    while (position < words->size() && lastPiece((*words)[position]) == "env") {
        const auto next = behindEnv(*words, position + 1);
        if (!next) {
            return std::nullopt;
        }
        position = *next;
    }
    if (position >= words->size()) {
        return std::nullopt;
    }
    ExecLine line;
    line.program = withoutFieldCodes((*words)[position]);
    if (line.program.empty() || line.program.ends_with('/')) {
        return std::nullopt;
    }
    line.arguments = static_cast<std::size_t>(
        std::count_if(words->begin() + static_cast<std::ptrdiff_t>(position) + 1, words->end(),
                      [](const std::string& word) { return !withoutFieldCodes(word).empty(); }));
    return line;
}

bool runsOtherPrograms(std::string_view name) {
    static constexpr auto programs = std::to_array<std::string_view>({"ash",
                                                                      "bash",
                                                                      "busybox",
                                                                      "bun",
                                                                      "bwrap",
                                                                      "csh",
                                                                      "dash",
                                                                      "dbus-launch",
                                                                      "deno",
                                                                      "dotnet",
                                                                      "electron",
                                                                      "env",
                                                                      "exo-open",
                                                                      "fish",
                                                                      "flatpak",
                                                                      "gamemoderun",
                                                                      "gjs",
                                                                      "gjs-console",
                                                                      "gtk-launch",
                                                                      "guile",
                                                                      "java",
                                                                      "javaw",
                                                                      "kioclient",
                                                                      "ksh",
                                                                      "ld-linux-x86-64.so",
                                                                      "lua",
                                                                      "luajit",
                                                                      "mksh",
                                                                      "mono",
                                                                      "nice",
                                                                      "node",
                                                                      "nodejs",
                                                                      "nohup",
                                                                      "perl",
                                                                      "php",
                                                                      "pkexec",
                                                                      "pypy",
                                                                      "python",
                                                                      "qemu-x86_64",
                                                                      "ruby",
                                                                      "setsid",
                                                                      "sh",
                                                                      "snap",
                                                                      "su",
                                                                      "sudo",
                                                                      "systemd-run",
                                                                      "tclsh",
                                                                      "tcsh",
                                                                      "wine",
                                                                      "wine-preloader",
                                                                      "wine64",
                                                                      "wine64-preloader",
                                                                      "wish",
                                                                      "xdg-open",
                                                                      "xvfb-run",
                                                                      "zsh"});
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto listed = [&](std::string_view text) {
        return std::find(programs.begin(), programs.end(), text) != programs.end();
    };
    if (listed(lower)) {
        return true;
    }
    std::string_view unversioned = lower;
    while (!unversioned.empty() && (unversioned.back() == '.' || unversioned.back() == '-' ||
                                    (unversioned.back() >= '0' && unversioned.back() <= '9'))) {
        unversioned.remove_suffix(1);
    }
    return listed(unversioned);
}

} // namespace varnet::platform
