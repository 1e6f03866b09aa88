#include "VarnetCore/Monitoring/Detector.h"

#include "VarnetCore/Base/LexicalPath.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace varnet::Detector {
namespace {

using namespace std::string_view_literals;

// These tests run over every process of the machine: none of them copies a text to lower its case.

constexpr char lowered(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool startsLowered(std::string_view text, std::string_view prefix) noexcept {
    if (text.size() < prefix.size()) return false;
    for (std::size_t at = 0; at < prefix.size(); ++at) {
        if (lowered(text[at]) != prefix[at]) return false;
    }
    return true;
}

constexpr bool equalsLowered(std::string_view text, std::string_view other) noexcept {
    return text.size() == other.size() && startsLowered(text, other);
}

constexpr bool containsLowered(std::string_view text, std::string_view part) noexcept {
    for (; text.size() >= part.size(); text.remove_prefix(1)) {
        if (startsLowered(text, part)) return true;
    }
    return false;
}

/// What basename lowers: the last non-empty piece, or the whole text when there is none.
constexpr std::string_view lastPiece(std::string_view path) noexcept {
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string_view::npos) return path;
    path = path.substr(0, end + 1);
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

constexpr std::string_view baseOf(std::string_view executable, std::string_view name) noexcept {
    return lastPiece(executable.empty() ? name : executable);
}

constexpr std::array runtimesAndTools{
    "node"sv,           "bun"sv,      "npm"sv,      "npx"sv,     "pnpm"sv,
    "yarn"sv,           "deno"sv,     "python"sv,   "python3"sv, "ruby"sv,
    "uvicorn"sv,        "gunicorn"sv, "rails"sv,    "vite"sv,    "next"sv,
    "astro"sv,          "nuxt"sv,     "tsserver"sv, "tsx"sv,     "tsc"sv,
    "jest"sv,           "vitest"sv,   "cargo"sv,    "rustc"sv,   "swift"sv,
    "swift-frontend"sv, "go"sv,
};

/// One agent; an empty field tests nothing.
struct AgentRow {
    std::string_view displayName;
    std::array<std::string_view, 2> bases; ///< exact base names
    std::string_view bundle;               ///< exact bundle identifier
    std::string_view bundlePart;           ///< part of a bundle identifier
    std::string_view package;              ///< part of the first arguments; holds no blank
};

constexpr std::array agents{
    AgentRow{"Claude Code", {"claude"}, {}, {}, "@anthropic-ai/claude-code"},
    AgentRow{"Codex", {"codex"}, "com.openai.codex", {}, "@openai/codex"},
    AgentRow{"Gemini CLI", {"gemini"}, {}, {}, "@google/gemini-cli"},
    AgentRow{"Cursor", {"cursor-agent", "cursor"}, "com.todesktop.230313mzl4w4u92", {}, {}},
    AgentRow{"OpenCode", {"opencode"}, {}, "opencode", {}},
    AgentRow{"ChatGPT", {}, "com.openai.chat", {}, {}},
    AgentRow{"Claude Desktop", {}, "com.anthropic.claudefordesktop", {}, {}},
    AgentRow{"Conductor", {"conductor"}, {}, "conductor", {}},
};

/// Arguments in which an agent's package is looked for: an interpreter's script comes early.
constexpr std::size_t headArguments = 4;

bool matches(const AgentRow& row, std::string_view base, std::string_view bundle,
             std::span<const std::string> head) noexcept {
    for (const std::string_view own : row.bases) {
        if (!own.empty() && equalsLowered(base, own)) return true;
    }
    if (!row.bundle.empty() && equalsLowered(bundle, row.bundle)) return true;
    if (!row.bundlePart.empty() && containsLowered(bundle, row.bundlePart)) return true;
    // A package name holds no blank, so it cannot reach from one argument into the next.
    return !row.package.empty() && std::any_of(head.begin(), head.end(), [&row](const std::string& argument) {
        return argument.find('@') != std::string::npos && containsLowered(argument, row.package);
    });
}

struct CommandLineAgent {
    std::string_view command;
    std::string_view displayName;
};

constexpr std::array commandLineAgents{
    CommandLineAgent{"claude", "Claude Code"}, CommandLineAgent{"codex", "Codex"},
    CommandLineAgent{"gemini", "Gemini CLI"},  CommandLineAgent{"cursor-agent", "Cursor"},
    CommandLineAgent{"opencode", "OpenCode"},
};

std::string_view commandLineAgent(std::string_view text) noexcept {
    const std::string_view base = lastPiece(text);
    for (const CommandLineAgent& agent : commandLineAgents) {
        if (equalsLowered(base, agent.command)) return agent.displayName;
    }
    return {};
}

/// A version used as a file name, such as "2.0.14": digits in at least two groups.
constexpr bool isDottedNumber(std::string_view text) noexcept {
    bool dotted = false;
    char before = '.';
    for (const char c : text) {
        if (c == '.') {
            if (before == '.') return false;
            dotted = true;
        } else if (c < '0' || c > '9') {
            return false;
        }
        before = c;
    }
    return dotted && before != '.';
}

/// On Linux the executable of a command-line agent often says nothing: a script's process runs `node` and
/// only titles itself, an installer names the binary after its version, a launcher is a link to a script.
std::string_view hiddenAgent(std::string_view name, std::string_view executable,
                             std::span<const std::string> arguments) noexcept {
    const std::string_view base = lastPiece(executable);
    const bool runtime =
        equalsLowered(base, "node") || equalsLowered(base, "bun") || equalsLowered(base, "deno");
    if (!runtime && !isDottedNumber(base)) return {};
    if (executable.find(".app/") != std::string_view::npos) return {};
    if (const auto found = commandLineAgent(name); !found.empty()) return found;
    // Only a runtime is followed by its script.
    for (const std::string& argument :
         arguments.first(std::min<std::size_t>(arguments.size(), runtime ? 2 : 1))) {
        if (const auto found = commandLineAgent(argument); !found.empty()) return found;
    }
    return {};
}

struct Framework {
    std::string_view displayName;
    std::array<std::string_view, 2> tokens;
    std::string_view prefix = {}; ///< matches what begins with it; empty: nothing
};

constexpr std::array frameworks{
    // The server titles its process with its version: "next-server (v15.1.0)".
    Framework{"Next.js", {"next", "next-server"}, "next-server (v"},
    Framework{"Vite", {"vite", "vite.js"}},
    Framework{"Astro", {"astro", "astro.js"}},
    Framework{"Nuxt", {"nuxt", "nuxi"}},
    Framework{"Uvicorn", {"uvicorn"}},
    Framework{"Rails", {"rails"}},
    Framework{"Django", {"manage.py"}},
};

/// The first row before `limit` that a token matches; `limit` when there is none.
constexpr std::size_t frameworkRow(std::string_view token, std::size_t limit) noexcept {
    for (std::size_t row = 0; row < limit; ++row) {
        const Framework& framework = frameworks[row];
        for (const std::string_view own : framework.tokens) {
            if (!own.empty() && equalsLowered(token, own)) return row;
        }
        if (!framework.prefix.empty() && startsLowered(token, framework.prefix)) return row;
    }
    return limit;
}

/// The rows decide, not the order of the tokens: each token can only lower the row.
std::size_t frameworkRow(std::span<const std::string> arguments, std::string_view name) noexcept {
    std::size_t row = frameworks.size();
    for (const std::string& argument : arguments)
        row = frameworkRow(lastPiece(argument), row);
    return frameworkRow(name, row);
}

} // namespace

std::string basename(std::string_view path) {
    std::string base(lastPiece(path));
    std::transform(base.begin(), base.end(), base.begin(), lowered);
    return base;
}

std::string_view agentName(std::string_view name, std::string_view executable,
                           std::span<const std::string> arguments, std::string_view bundleID) noexcept {
    const std::string_view base = baseOf(executable, name);
    const auto head = arguments.first(std::min(arguments.size(), headArguments));
    for (const AgentRow& row : agents) {
        if (matches(row, base, bundleID, head)) return row.displayName;
    }
    return hiddenAgent(name, executable, arguments);
}

std::optional<std::string> agent(std::string_view name, std::string_view executable,
                                 std::span<const std::string> arguments, std::string_view bundleID) {
    const std::string_view found = agentName(name, executable, arguments, bundleID);
    return found.empty() ? std::nullopt : std::optional<std::string>(found);
}

bool isDevelopment(std::string_view executable, std::string_view name,
                   std::span<const std::string> arguments) noexcept {
    const bool isAgent = !agentName(name, executable, arguments, {}).empty();
    // What runs inside an application bundle is that application's own, whatever it is called. Python's
    // framework wraps its interpreter in a bundle and means nothing by it.
    const bool bundled = executable.find(".app/Contents/") != std::string_view::npos &&
                         executable.find("/Python.app/Contents/") == std::string_view::npos;
    if (isAgent || bundled) return isAgent;
    const std::string_view base = baseOf(executable, name);
    return std::any_of(runtimesAndTools.begin(), runtimesAndTools.end(),
                       [base](std::string_view tool) { return equalsLowered(base, tool); }) ||
           startsLowered(base, "python3.") || frameworkRow(arguments, name) < frameworks.size();
}

std::optional<std::string> framework(std::span<const std::string> arguments, std::string_view name) {
    const std::size_t row = frameworkRow(arguments, name);
    if (row == frameworks.size()) return std::nullopt;
    return std::string(frameworks[row].displayName);
}

std::optional<std::string> applicationPath(std::string_view executable) {
    const std::size_t at = executable.find(".app/");
    if (at == std::string_view::npos) return std::nullopt;
    return std::string(executable.substr(0, at + ".app"sv.size()));
}

bool isInstalledPluginDirectory(std::string_view path) {
    if (path.find("/.claude/") == std::string_view::npos && path.find("/.codex/") == std::string_view::npos) {
        return false;
    }
    // Slashes around it make every match one of whole pieces.
    const std::string pieces = '/' + LexicalPath::standardized(path) + '/';
    return pieces.find("/.claude/plugins/cache/") != std::string::npos ||
           pieces.find("/.codex/plugins/cache/") != std::string::npos;
}

} // namespace varnet::Detector
